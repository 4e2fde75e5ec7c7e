#pragma once

#include "support/ByteBlock.h"

#include <cstdint>

/// A byte to search for. Finds ASCII letters in both cases.
class BytePattern
{
public:
    /// `byte` is no upper-case letter.
    explicit BytePattern(char byte)
        : m_bytes(ByteBlock::EachByte * static_cast<unsigned char>(byte))
        , m_caseBits(byte >= 'a' && byte <= 'z' ? ByteBlock::EachByte * 0x20 : 0)
    {
    }

    /// The highest bit of each equal byte in the eight bytes at `text`.
    std::uint64_t equalBytes(const char *text) const
    {
        constexpr std::uint64_t LowBits = ~ByteBlock::HighBits;
        const std::uint64_t differences = (ByteBlock::load(text) | m_caseBits) ^ m_bytes;
        return ~(((differences & LowBits) + LowBits) | differences | LowBits);
    }

private:
    std::uint64_t m_bytes;
    std::uint64_t m_caseBits; // set before comparing, which makes letters lower-case
};
