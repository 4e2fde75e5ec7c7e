#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Eight bytes of a text as one number, to process them together. The first byte is the lowest.
namespace ByteBlock
{

constexpr std::size_t Size = sizeof(std::uint64_t);
constexpr std::uint64_t EachByte = 0x0101'0101'0101'0101; ///< times a byte: that byte in each place
constexpr std::uint64_t HighBits = 0x80 * EachByte;       ///< set in bytes that are not ASCII

/// Changes the order of bytes on big-endian processors.
inline std::uint64_t inTextOrder(std::uint64_t block)
{
    return std::endian::native == std::endian::big ? __builtin_bswap64(block) : block;
}

inline std::uint64_t load(const char *text)
{
    std::uint64_t block = 0;
    std::memcpy(&block, text, Size);
    return inTextOrder(block);
}

inline void store(std::uint64_t block, char *text)
{
    block = inTextOrder(block);
    std::memcpy(text, &block, Size);
}

/// The index of the first byte that is not zero, or 8 if all are zero.
inline std::size_t firstIndex(std::uint64_t bits)
{
    return static_cast<std::size_t>(std::countr_zero(bits)) / 8;
}

} // namespace ByteBlock
