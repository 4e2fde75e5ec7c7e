#include "support/Uuid.h"

#include <algorithm>
#include <cstdint>

namespace
{

using Bytes = std::array<unsigned char, 16>;

constexpr std::string_view Digits = "0123456789ABCDEF";

constexpr bool isHyphenPlace(std::size_t place)
{
    return place == 8 || place == 13 || place == 18 || place == 23;
}

constexpr int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

QUuid uuidFromBytes(const Bytes &bytes)
{
    const auto word = [&bytes](std::size_t at) {
        return static_cast<std::uint16_t>((bytes.at(at) << 8) | bytes.at(at + 1));
    };
    const auto high = (static_cast<std::uint32_t>(word(0)) << 16) | word(2);
    return { high,      word(4),   word(6),   bytes[8],  bytes[9], bytes[10],
             bytes[11], bytes[12], bytes[13], bytes[14], bytes[15] };
}

Bytes bytesOf(const QUuid &uuid)
{
    Bytes bytes {
        static_cast<unsigned char>(uuid.data1 >> 24), static_cast<unsigned char>(uuid.data1 >> 16),
        static_cast<unsigned char>(uuid.data1 >> 8),  static_cast<unsigned char>(uuid.data1),
        static_cast<unsigned char>(uuid.data2 >> 8),  static_cast<unsigned char>(uuid.data2),
        static_cast<unsigned char>(uuid.data3 >> 8),  static_cast<unsigned char>(uuid.data3)
    };
    std::ranges::copy(uuid.data4, bytes.begin() + 8);
    return bytes;
}

} // namespace

std::optional<QUuid> uuidFromText(std::string_view text)
{
    if (text.size() != 36)
        return std::nullopt;
    Bytes bytes {};
    std::size_t digits = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (isHyphenPlace(place)) {
            if (text[place] != '-')
                return std::nullopt;
            continue;
        }
        const int value = digitValue(text[place]);
        if (value < 0)
            return std::nullopt;
        auto &byte = bytes.at(digits++ / 2);
        byte = static_cast<unsigned char>((byte << 4) | value);
    }
    return uuidFromBytes(bytes);
}

std::array<char, 36> uuidText(const QUuid &uuid)
{
    std::array<char, 36> text {};
    std::size_t place = 0;
    for (const auto byte : bytesOf(uuid)) {
        if (isHyphenPlace(place))
            text.at(place++) = '-';
        text.at(place++) = Digits[byte >> 4];
        text.at(place++) = Digits[byte & 0xF];
    }
    return text;
}
