#pragma once

#include <string>
#include <sys/socket.h>
#include <sys/un.h>

/// The address of a local socket under an abstract name, which needs no file.
class AbstractAddress
{
public:
    /// Names longer than 107 bytes are cut there.
    explicit AbstractAddress(const std::string &name);

    const sockaddr *generic() const { return reinterpret_cast<const sockaddr *>(&m_address); }

    socklen_t length() const { return m_length; }

private:
    sockaddr_un m_address { .sun_family = AF_UNIX, .sun_path = {} };
    socklen_t m_length;
};
