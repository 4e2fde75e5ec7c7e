#include "views/EmojiRanges.h"

#include <QList>
#include <QRawFont>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace EmojiRanges
{

namespace
{

constexpr char32_t GrinningFace = 0x1F600;
constexpr QChar EmojiVariation(0xFE0F);

/// Whether there may be emoji: they lie outside the basic plane or ask for their look.
bool mayHaveEmoji(const QString &text)
{
    return std::ranges::any_of(text, [](QChar character) {
        return character.isHighSurrogate() || character == EmojiVariation;
    });
}

/// Whether `character`, a grapheme cluster, is drawn as an emoji. A digit in a keycap is not: color
/// fonts have grey digits for them.
bool isEmoji(QStringView character)
{
    constexpr char32_t FirstSymbol = 0x2000;
    const auto first = character.toUcs4().value(0);
    if (first < FirstSymbol)
        return false;
    const bool isPictograph = first >= 0x1F000 && first <= 0x1FAFF;
    const bool isEnclosedLetter = first >= 0x1F100 && first <= 0x1F1E5;
    return (isPictograph && !isEnclosedLetter) || character.contains(EmojiVariation);
}

QTextCharFormat emojiFormat(const QFont &font)
{
    QStringList families = font.families();
    std::swap(families[0], families[1]);
    QTextCharFormat format;
    format.setFontFamilies(families);
    return format;
}

} // namespace

bool areNeeded(const QFont &font)
{
    return font.families().size() > 1 && QRawFont::fromFont(font).supportsCharacter(GrinningFace);
}

QList<QTextLayout::FormatRange> in(const QString &text, const QFont &font)
{
    QList<QTextLayout::FormatRange> ranges;
    if (!mayHaveEmoji(text) || !areNeeded(font))
        return ranges;
    const QTextCharFormat format = emojiFormat(font);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (auto start = finder.position(); finder.toNextBoundary() != -1; start = finder.position()) {
        const auto length = finder.position() - start;
        if (isEmoji(QStringView(text).sliced(start, length)))
            ranges.append({ static_cast<int>(start), static_cast<int>(length), format });
    }
    return ranges;
}

} // namespace EmojiRanges
