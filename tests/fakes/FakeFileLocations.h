#pragma once

#include "platform/FileLocations.h"

/// Puts the user's files where the test says.
class FakeFileLocations final : public FileLocations
{
public:
    QString applicationSupport() const override { return folder; }

    bool mayWrite() override { return isWritable; }

    QString folder;
    bool isWritable = true;
};
