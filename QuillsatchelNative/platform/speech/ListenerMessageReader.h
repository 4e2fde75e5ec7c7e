#pragma once

#include "platform/speech/ListenerMessage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Finds the messages in a stream that arrives in pieces of any size. A stream that holds anything
/// else is broken from there on: where the next message begins, nobody can know.
class ListenerMessageReader
{
public:
    void feed(std::string_view bytes);
    /// None if the next message has not arrived whole, or if the stream is broken.
    std::optional<ListenerMessage> next();

    bool isBroken() const { return m_isBroken; }

private:
    std::string m_bytes;
    std::size_t m_position = 0; // in m_bytes, of the next message
    bool m_isBroken = false;
};
