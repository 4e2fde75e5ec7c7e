#include "views/EmojiRanges.h"

#include <QList>
#include <QRawFont>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <utility>

namespace EmojiRanges
{

namespace
{

constexpr char32_t GrinningFace = 0x1F600;
constexpr QChar TextVariation(0xFE0E); // requests text presentation
constexpr QChar EmojiVariation(0xFE0F);

struct Range {
    char16_t first;
    char16_t last;
};

/// The code points of the basic multilingual plane with the property Emoji_Presentation, sorted.
constexpr std::array BasicEmoji {
    Range { 0x231A, 0x231B }, Range { 0x23E9, 0x23EC }, Range { 0x23F0, 0x23F0 },
    Range { 0x23F3, 0x23F3 }, Range { 0x25FD, 0x25FE }, Range { 0x2614, 0x2615 },
    Range { 0x2648, 0x2653 }, Range { 0x267F, 0x267F }, Range { 0x2693, 0x2693 },
    Range { 0x26A1, 0x26A1 }, Range { 0x26AA, 0x26AB }, Range { 0x26BD, 0x26BE },
    Range { 0x26C4, 0x26C5 }, Range { 0x26CE, 0x26CE }, Range { 0x26D4, 0x26D4 },
    Range { 0x26EA, 0x26EA }, Range { 0x26F2, 0x26F3 }, Range { 0x26F5, 0x26F5 },
    Range { 0x26FA, 0x26FA }, Range { 0x26FD, 0x26FD }, Range { 0x2705, 0x2705 },
    Range { 0x270A, 0x270B }, Range { 0x2728, 0x2728 }, Range { 0x274C, 0x274C },
    Range { 0x274E, 0x274E }, Range { 0x2753, 0x2755 }, Range { 0x2757, 0x2757 },
    Range { 0x2795, 0x2797 }, Range { 0x27B0, 0x27B0 }, Range { 0x27BF, 0x27BF },
    Range { 0x2B1B, 0x2B1C }, Range { 0x2B50, 0x2B50 }, Range { 0x2B55, 0x2B55 },
};

bool isBasicEmoji(char32_t character)
{
    const auto range = std::ranges::lower_bound(BasicEmoji, character, {}, &Range::last);
    return range != BasicEmoji.end() && character >= range->first;
}

bool mayHaveEmoji(const QString &text)
{
    return std::ranges::any_of(text, [](QChar character) {
        return character.isHighSurrogate() || character == EmojiVariation ||
               isBasicEmoji(character.unicode());
    });
}

/// Whether the grapheme cluster is drawn as an emoji. Keycaps are not, because colour fonts have
/// grey digits for them.
bool isEmoji(QStringView cluster)
{
    constexpr char32_t FirstSymbol = 0x2000;
    const auto first = cluster.toUcs4().value(0);
    if (first < FirstSymbol || cluster.contains(TextVariation))
        return false;
    const bool isPictograph = first >= 0x1F000 && first <= 0x1FAFF;
    const bool isEnclosedLetter = first >= 0x1F100 && first <= 0x1F1E5;
    return (isPictograph && !isEnclosedLetter) || isBasicEmoji(first) ||
           cluster.contains(EmojiVariation);
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
