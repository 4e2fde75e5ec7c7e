#pragma once

#include <QString>

class FileLocations;

/// The path of the folder for all our files. Creates it, for its owner only because prompts can
/// hold secrets; an existing folder keeps its permissions. Returns the path even if the folder
/// cannot be created, but stops the process if the machine has no folder for user data.
QString prepareApplicationFolder(const FileLocations &locations);
