#pragma once

#include <cstdint>

/// The start of an encoded message. Both ends run on one machine, so numbers have its byte order.
struct ListenerMessageHeader {
    /// Changes with the protocol: an update may replace the listener of a running program.
    static constexpr std::uint8_t Version = 2;

    std::uint32_t payloadSize = 0;
    std::uint32_t task = 0;
    std::uint8_t version = Version;
    std::uint8_t kind = 0;
    std::uint16_t reserved = 0; ///< zero
};

static_assert(sizeof(ListenerMessageHeader) == 12);
