#include "support/Utf8.h"

#include <QChar>

#include <algorithm>

namespace
{

/// Whether a code point begins at `offset`, or the text ends there.
bool isBoundary(std::string_view text, std::size_t offset)
{
    return offset >= text.size() || (text[offset] & 0xC0) != 0x80;
}

/// The number of bytes of a code point that starts with `lead`.
std::size_t codePointSize(unsigned char lead)
{
    if (lead < 0xE0)
        return lead < 0x80 ? 1 : 2;
    return lead < 0xF0 ? 3 : 4;
}

} // namespace

QString stringFromUtf8(std::string_view text)
{
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (text.starts_with(ByteOrderMark))
        string.prepend(QChar::ByteOrderMark);
    return string;
}

std::string_view utf8Beginning(std::string_view text, std::size_t size)
{
    while (size > 0 && !isBoundary(text, size))
        --size;
    return text.substr(0, size);
}

std::string_view utf8End(std::string_view text, std::size_t size)
{
    if (size >= text.size())
        return text;
    std::size_t offset = text.size() - size;
    while (!isBoundary(text, offset))
        ++offset;
    return text.substr(offset);
}

std::string_view firstCodePoint(std::string_view text)
{
    return text.substr(0, codePointSize(static_cast<unsigned char>(text.front())));
}

std::string_view lastCodePoint(std::string_view text)
{
    std::size_t offset = text.empty() ? 0 : text.size() - 1;
    while (offset > 0 && !isBoundary(text, offset))
        --offset;
    return text.substr(offset);
}

char32_t decodedCodePoint(std::string_view bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    char32_t codePoint = bytes.size() == 1 ? lead : lead & (0xFFU >> (bytes.size() + 1));
    for (const char byte : bytes.substr(1))
        codePoint = codePoint << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    return std::min(codePoint, char32_t { QChar::LastValidCodePoint });
}
