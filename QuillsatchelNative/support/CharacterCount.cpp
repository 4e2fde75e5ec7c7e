#include "support/CharacterCount.h"

#include <QString>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace
{

// Beyond this many bytes a character the text is not looked at: enough for any that people
// write, and a hostile one cannot make a name of a megabyte slow.
constexpr std::size_t BytesPerCharacter = 64;

// Half an encoded character at the end would count as one of its own.
std::string_view beginningOf(std::string_view text, std::size_t size)
{
    const auto isContinuation = [](char byte) { return (byte & 0xC0) == 0x80; };
    while (size < text.size() && size > 0 && isContinuation(text[size]))
        --size;
    return text.substr(0, size);
}

} // namespace

std::size_t characterCount(std::string_view text, std::size_t limit)
{
    text = beginningOf(text, limit * BytesPerCharacter);
    const auto string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, string);
    std::size_t count = 0;
    while (count < limit && finder.toNextBoundary() != -1)
        ++count;
    return count;
}
