#pragma once

#include <QString>

/// Where the user's files belong on this machine.
class FileLocations
{
public:
    virtual ~FileLocations() = default;

    /// The folder in which programs keep the user's data, empty where the machine has none.
    virtual QString applicationSupport() const = 0;

    /// Whether this process may write the user's files now; false while another one does.
    virtual bool mayWrite() = 0;
};
