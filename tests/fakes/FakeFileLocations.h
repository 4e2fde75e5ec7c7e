#pragma once

#include "platform/FileLocations.h"

/// Keeps the user's files in folders that the test sets.
class FakeFileLocations final : public FileLocations
{
public:
    QString applicationSupport() const override { return folder; }

    QString applicationState() const override { return stateFolder; }

    bool mayWrite() override { return isWritable; }

    QString folder;
    QString stateFolder;
    bool isWritable = true;
};
