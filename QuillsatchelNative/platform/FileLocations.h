#pragma once

#include <QString>

/// Where the user's files are, and whether we may write them.
class FileLocations
{
public:
    virtual ~FileLocations() = default;

    /// The folder for the data of the user's programs; empty if the machine has none.
    virtual QString applicationSupport() const = 0;

    /// The folder for what programs keep about the past, which is not copied to other machines.
    virtual QString applicationState() const = 0;

    /// False while another process writes the user's files.
    virtual bool mayWrite() = 0;
};
