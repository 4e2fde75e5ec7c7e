#pragma once

#include "support/FileDescriptor.h"

#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

/// Short messages between processes of one user on this machine. No call blocks. Each message is
/// one datagram with the sender's credentials: messages of other users are dropped, and no sender
/// can keep the receiver waiting for the rest. The name is abstract, so no file is left over.
class InstanceSocket
{
public:
    /// Whom a message came from.
    struct Sender {
        sockaddr_un address {};
        socklen_t length = 0;
    };

    struct Message {
        std::string text;
        Sender sender;
    };

    /// Takes `wantedName` if it is free; otherwise, or without one, the system chooses a name.
    explicit InstanceSocket(const std::string &wantedName = {});

    /// Letters, digits and hyphens; empty if there is no socket.
    std::string name() const;

    /// Readable when a message is there; -1 if there is no socket.
    int descriptor() const { return m_socket.number(); }

    /// From now on only whoever has this name is heard. False if nobody has.
    bool connectTo(const std::string &name);

    /// To whom it is connected. False if the message could not be sent.
    bool send(const std::string &text) const;
    bool answer(const Sender &sender, const std::string &text) const;

    /// The next message of our own user; none if no such message is there. What is longer than
    /// `LongestMessage` is passed over.
    std::optional<Message> receive() const;

    /// In bytes.
    static constexpr std::size_t LongestMessage = 2048;

private:
    FileDescriptor m_socket;
};
