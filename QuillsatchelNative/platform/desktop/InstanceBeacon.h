#pragma once

#include "support/FileDescriptor.h"

#include <string>

/// Tells the user's other processes that one uses the folder at a path, even after the folder or
/// its lock file was deleted or replaced. It is a listening abstract socket named after the user
/// and the path, which the kernel removes when the process ends.
class InstanceBeacon
{
public:
    explicit InstanceBeacon(const std::string &folder);

    /// The name of the InstanceSocket of the beacon's process.
    std::string requestName() const { return m_name + "-requests"; }

    /// Whether a process of this user, possibly this one, has turned it on. Ignores sockets of
    /// other users.
    bool isOn() const;

    /// Turns it on for the lifetime of this object. Does nothing if the name is taken.
    void turnOn();

private:
    std::string m_name;
    FileDescriptor m_socket;
};
