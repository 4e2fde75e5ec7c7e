#include "support/Utf8.h"

namespace
{

/// Whether a code point begins at `offset`, or the text ends there.
bool isBoundary(std::string_view text, std::size_t offset)
{
    return offset >= text.size() || (text[offset] & 0xC0) != 0x80;
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
