#pragma once

#include "support/FileDescriptor.h"

#include <string>

/// Shows the other processes of this user that one works on a folder of this path, even after the
/// folder or its lock file was deleted or replaced. It is a socket that listens under an abstract
/// name derived from user and path; the system removes it with its process, however that ends.
class InstanceBeacon
{
public:
    explicit InstanceBeacon(const std::string &folder);

    /// The name of the InstanceSocket on which the process behind the beacon receives requests.
    std::string requestName() const { return m_name + "-requests"; }

    /// Whether a process of this user, this one included, has lit it. Sockets that other users give
    /// this name do not count.
    bool isLit() const;

    /// Stays lit as long as this object lives. Does nothing if the name is taken.
    void light();

private:
    std::string m_name;
    FileDescriptor m_socket;
};
