#include "platform/desktop/InstanceBeacon.h"

#include "platform/desktop/AbstractAddress.h"

#include <QCryptographicHash>

#include <cerrno>
#include <filesystem>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

// Hashed, because a path can be longer than a socket name (107 bytes).
std::string nameFor(const std::string &folder)
{
    const auto path = std::filesystem::path(folder).lexically_normal().string();
    const auto hash = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex();
    return "quillsatchel-" + std::to_string(getuid()) + '-' + hash.toStdString();
}

FileDescriptor makeSocket()
{
    return FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

} // namespace

InstanceBeacon::InstanceBeacon(const std::string &folder)
    : m_name(nameFor(folder))
{
}

bool InstanceBeacon::isOn() const
{
    const AbstractAddress address(m_name);
    const auto socket = makeSocket();
    if (connect(socket.number(), address.generic(), address.length()) != 0)
        return errno == EAGAIN; // the listener's queue is full
    ucred listener {};
    socklen_t size = sizeof(listener);
    return getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &listener, &size) == 0 &&
           listener.uid == getuid();
}

// Connections are never accepted: the kernel gives the connecting side the listener's credentials.
void InstanceBeacon::turnOn()
{
    const AbstractAddress address(m_name);
    auto socket = makeSocket();
    if (bind(socket.number(), address.generic(), address.length()) == 0 &&
        listen(socket.number(), SOMAXCONN) == 0)
        m_socket = std::move(socket);
}
