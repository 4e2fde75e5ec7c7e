#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// What this program and its listener say to each other, over a stream. Every `audio` is answered
/// by `heard` or `partial` and every `end` by `final`, in their order; nothing else is answered.
struct ListenerMessage {
    enum class Kind : std::uint8_t {
        begin,   ///< a task begins, and ends whatever other there is
        audio,   ///< the next samples
        end,     ///< there is no more audio
        cancel,  ///< nobody waits for the result any more
        heard,   ///< these samples changed nothing
        partial, ///< all that was said so far, UTF-8
        final,   ///< all that was said, UTF-8
    };

    Kind kind = Kind::begin;
    std::uint32_t task = 0;
    std::string payload; ///< of audio, partial and final

    static ListenerMessage audio(std::uint32_t task, std::span<const std::int16_t> samples);

    bool operator==(const ListenerMessage &) const = default;
    std::vector<std::int16_t> samples() const;
    /// Puts the message behind what `stream` holds.
    void appendTo(std::string &stream) const;

    /// What a payload has at most, in bytes: the words of many hours.
    static constexpr std::size_t MaxPayload = 1 << 20;
};
