#pragma once

#include "support/FileDescriptor.h"

#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

/// Short messages between one user's processes on this machine. No call blocks. Each message is one
/// datagram with the sender's credentials: messages of other users are dropped, and no sender can
/// make the receiver wait for the rest. An abstract socket, so no file is left behind.
class InstanceSocket
{
public:
    /// The address of a sender.
    struct Sender {
        sockaddr_un address {};
        socklen_t length = 0;
    };

    struct Message {
        std::string text;
        Sender sender;
    };

    /// Takes `wantedName` if it is free. Otherwise, or if it is empty, the kernel chooses a name.
    explicit InstanceSocket(const std::string &wantedName = {});

    /// Letters, digits and hyphens; empty if creating the socket failed.
    std::string name() const;

    /// Readable when a message is waiting; -1 if creating the socket failed.
    int descriptor() const { return m_socket.number(); }

    /// From now on sends to and receives from the socket `name` only. False if it does not exist.
    bool connectTo(const std::string &name);

    /// Sends to the connected socket. False on failure.
    bool send(const std::string &text) const;
    bool answer(const Sender &sender, const std::string &text) const;

    /// The next message; none if no message is waiting, or if it is longer than
    /// `MaximumMessageSize` or from another user.
    std::optional<Message> receive() const;

    static constexpr std::size_t MaximumMessageSize = 2048; ///< bytes

private:
    FileDescriptor m_socket;
};
