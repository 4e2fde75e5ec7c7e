#pragma once

#include <QString>

class FileLocations;

/// The path of the folder that holds all our files, made if it is not there yet. Prompts hold
/// secrets: a new one is for its owner only; one that is there stays as it is. A folder that cannot
/// be made is no failure yet, but the process stops on a machine that has no place for one.
QString prepareApplicationFolder(const FileLocations &locations);
