#include "support/CharacterCount.h"

#include "support/Utf8.h"

#include <QString>
#include <QTextBoundaryFinder>

namespace
{

// Beyond this many bytes a character the text is not looked at: enough for any that people
// write, and a hostile one cannot make a name of a megabyte slow.
constexpr std::size_t BytesPerCharacter = 64;

} // namespace

std::size_t characterCount(std::string_view text, std::size_t limit)
{
    text = utf8Beginning(text, limit * BytesPerCharacter);
    const auto string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, string);
    std::size_t count = 0;
    while (count < limit && finder.toNextBoundary() != -1)
        ++count;
    return count;
}
