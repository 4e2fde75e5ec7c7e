#pragma once

#include <string>
#include <sys/socket.h>
#include <sys/un.h>

/// The address of an abstract Unix socket, which needs no file.
class AbstractAddress
{
public:
    /// Truncates names to 107 bytes.
    explicit AbstractAddress(const std::string &name);

    const sockaddr *generic() const { return reinterpret_cast<const sockaddr *>(&m_address); }

    socklen_t length() const { return m_length; }

private:
    sockaddr_un m_address { .sun_family = AF_UNIX, .sun_path = {} };
    socklen_t m_length;
};
