#pragma once

#include "support/FileDescriptor.h"

#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

/// Short messages between processes of one user on this machine. Nothing here waits. A message
/// comes whole, with the system's word for who sent it: what other users send is not heard, and no
/// sender can keep the receiver waiting for the rest. The name is of the system's choosing, so that
/// nobody can take it first, and there is no file of it to be left over.
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

    InstanceSocket();

    /// A few letters and digits; empty if there is no socket.
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
