#include "support/Uuid.h"

#include <QByteArrayView>

#include <algorithm>
#include <cstddef>

namespace
{

using Bytes = std::array<unsigned char, 16>;

constexpr std::size_t TextSize = 36;

constexpr std::string_view Digits = "0123456789ABCDEF";

// The value of each hexadecimal digit in either case, and NoDigit for other characters.
constexpr unsigned char NoDigit = 0xFF;

constexpr std::array<unsigned char, 256> makeDigitValues()
{
    std::array<unsigned char, 256> values {};
    values.fill(NoDigit);
    for (unsigned char value = 0; value < Digits.size(); ++value) {
        const auto digit = static_cast<unsigned char>(Digits[value]);
        values.at(digit) = value;
        values.at(digit | 0x20) = value; // lower case; digits below ten have this bit
    }
    return values;
}

constexpr auto DigitValues = makeDigitValues();

unsigned char digitValue(char digit)
{
    return DigitValues[static_cast<unsigned char>(digit)];
}

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
    if (text.size() != TextSize)
        return std::nullopt;
    Bytes bytes {};
    std::size_t position = 0;
    for (auto &byte : bytes) {
        if (isHyphenPosition(position) && text[position++] != '-')
            return std::nullopt;
        const auto high = digitValue(text[position++]);
        const auto low = digitValue(text[position++]);
        if (high == NoDigit || low == NoDigit)
            return std::nullopt;
        byte = static_cast<unsigned char>(high << 4 | low);
    }
    return QUuid::fromRfc4122(QByteArrayView(bytes));
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
