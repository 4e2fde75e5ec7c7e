#pragma once

#include "platform/speech/ListenerMessage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Decodes messages from a stream that arrives in pieces of any size. After an invalid message the
/// stream is broken, because the start of the next message is unknown.
class ListenerMessageReader
{
public:
    void feed(std::string_view bytes);
    /// None if the next message is incomplete or the stream is broken.
    std::optional<ListenerMessage> next();

    bool isBroken() const { return m_isBroken; }

private:
    std::string m_bytes;
    std::size_t m_position = 0; // in m_bytes, of the next message
    bool m_isBroken = false;
};
