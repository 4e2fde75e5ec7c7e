#pragma once

#include "platform/FileLocations.h"

/// Keeps the user's files in a folder that the test sets.
class FakeFileLocations final : public FileLocations
{
public:
    QString applicationSupport() const override { return folder; }

    bool mayWrite() override { return isWritable; }

    QString folder;
    bool isWritable = true;
};
