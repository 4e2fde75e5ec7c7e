#include "support/CharacterCount.h"

#include "support/Utf8.h"

#include <QString>
#include <QTextBoundaryFinder>

namespace
{

// Only this many bytes per character are examined, so that counting stays fast in a name of a
// megabyte. Graphemes in real texts are shorter.
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
