#include "support/Uuid.h"

#include <algorithm>

namespace
{

using Bytes = std::array<unsigned char, 16>;

constexpr std::string_view Digits = "0123456789ABCDEF";

constexpr bool isHyphenPosition(std::size_t position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
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
    constexpr std::string_view Null = "00000000-0000-0000-0000-000000000000";
    if (text.size() != Null.size())
        return std::nullopt; // the other forms that Qt reads are longer or shorter
    const auto uuid = QUuid::fromString(QLatin1StringView(text.data(), qsizetype(text.size())));
    if (uuid.isNull() && text != Null)
        return std::nullopt;
    return uuid;
}

std::array<char, 36> uuidText(const QUuid &uuid)
{
    std::array<char, 36> text {};
    std::size_t position = 0;
    for (const auto byte : bytesOf(uuid)) {
        if (isHyphenPosition(position))
            text.at(position++) = '-';
        text.at(position++) = Digits[byte >> 4];
        text.at(position++) = Digits[byte & 0xF];
    }
    return text;
}
