#pragma once

#include "support/DocumentFile.h"

#include <QString>

struct Platform;

/// The document file `name`, such as "prompts.json", in the folder for all our files, which is
/// created as `prepareApplicationFolder` does. Its earlier versions are in the state folder.
DocumentFile applicationDocument(const QString &name, Platform &platform);
