#include "platform/desktop/InstanceSocket.h"

#include "platform/desktop/AbstractAddress.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <unistd.h>

namespace
{

// An abstract name follows a zero byte.
constexpr socklen_t NameOffset = offsetof(sockaddr_un, sun_path) + 1;

sockaddr *generic(sockaddr_un &address)
{
    return reinterpret_cast<sockaddr *>(&address);
}

const sockaddr *generic(const sockaddr_un &address)
{
    return reinterpret_cast<const sockaddr *>(&address);
}

bool isOfOurUser(msghdr &header)
{
    const auto *const control = CMSG_FIRSTHDR(&header);
    if (!control || control->cmsg_level != SOL_SOCKET || control->cmsg_type != SCM_CREDENTIALS)
        return false;
    ucred credentials {};
    std::memcpy(&credentials, CMSG_DATA(control), sizeof(credentials));
    return credentials.uid == getuid();
}

} // namespace

InstanceSocket::InstanceSocket(const std::string &wantedName)
    : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
{
    constexpr int Yes = 1;
    setsockopt(m_socket.number(), SOL_SOCKET, SO_PASSCRED, &Yes, sizeof(Yes));
    const AbstractAddress wanted(wantedName);
    if (!wantedName.empty() && bind(m_socket.number(), wanted.generic(), wanted.length()) == 0)
        return;
    const sockaddr_un nameless { .sun_family = AF_UNIX, .sun_path = {} };
    if (bind(m_socket.number(), generic(nameless), sizeof(nameless.sun_family)) != 0)
        m_socket = FileDescriptor();
}

std::string InstanceSocket::name() const
{
    Sender own { .length = sizeof(sockaddr_un) };
    if (getsockname(m_socket.number(), generic(own.address), &own.length) != 0 ||
        own.length <= NameOffset)
        return {};
    return { own.address.sun_path + 1, own.length - NameOffset };
}

bool InstanceSocket::connectTo(const std::string &name)
{
    const AbstractAddress other(name);
    return connect(m_socket.number(), other.generic(), other.length()) == 0;
}

bool InstanceSocket::send(const std::string &text) const
{
    return ::send(m_socket.number(), text.data(), text.size(), MSG_NOSIGNAL) >= 0;
}

bool InstanceSocket::answer(const Sender &sender, const std::string &text) const
{
    return sendto(m_socket.number(), text.data(), text.size(), MSG_NOSIGNAL,
                  generic(sender.address), sender.length) >= 0;
}

std::optional<InstanceSocket::Message> InstanceSocket::receive() const
{
    Message message;
    message.text.resize(MaximumMessageSize);
    iovec bytes { .iov_base = message.text.data(), .iov_len = message.text.size() };
    // Space for the credentials only, so that the kernel drops file descriptors sent along.
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control {};
    msghdr header {};
    header.msg_name = &message.sender.address;
    header.msg_namelen = sizeof(message.sender.address);
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    header.msg_control = control.data();
    header.msg_controllen = control.size();
    const auto size = recvmsg(m_socket.number(), &header, MSG_CMSG_CLOEXEC);
    if (size < 0 || (header.msg_flags & MSG_TRUNC) != 0 || !isOfOurUser(header))
        return std::nullopt;
    message.text.resize(static_cast<std::size_t>(size));
    message.sender.length = header.msg_namelen;
    return message;
}
