#include "support/SingleLine.h"

#include "support/Utf8.h"

#include <QList>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace SingleLine
{

namespace
{

constexpr std::size_t MaximumLineSize = 1024; // bytes; longer than a line on any screen
constexpr int MaximumMenuLength = 80;         // graphemes
constexpr QChar Ellipsis(0x2026);

bool isBidirectionalControl(QChar character)
{
    switch (character.direction()) {
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return false;
    }
}

bool isControl(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return isBidirectionalControl(character);
    }
}

QString singleLine(std::string_view text)
{
    QString line = stringFromUtf8(text);
    const auto isBoth = [](QChar first, QChar second) {
        return isControl(first) && isControl(second);
    };
    line.erase(std::unique(line.begin(), line.end(), isBoth), line.end());
    std::ranges::replace_if(line, isControl, QLatin1Char(' '));
    return line;
}

/// Invisible characters that Unicode does not class as white space or format characters: fillers,
/// the empty Braille pattern, variation selectors and the grapheme joiner.
bool isFiller(char32_t character)
{
    constexpr std::u32string_view Fillers = U"\u034F\u115F\u1160\u2800\u3164\uFFA0";
    return Fillers.find(character) != std::u32string_view::npos ||
           (character >= 0xFE00 && character <= 0xFE0F) ||
           (character >= 0xE0100 && character <= 0xE01EF);
}

bool isInvisible(char32_t character)
{
    const auto category = QChar::category(character);
    return QChar::isSpace(character) || category == QChar::Other_Control ||
           category == QChar::Other_Format || isFiller(character);
}

} // namespace

QString beginning(std::string_view text)
{
    return singleLine(utf8Beginning(text, MaximumLineSize));
}

QString abridged(std::string_view text)
{
    QString line = beginning(text);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
    qsizetype ellipsisPosition = 0;
    for (int count = 1; finder.toNextBoundary() != -1; ++count) {
        if (count == MaximumMenuLength - 1)
            ellipsisPosition = finder.position();
        if (count > MaximumMenuLength)
            return line.left(ellipsisPosition) + Ellipsis;
    }
    return line;
}

QString ends(std::string_view text)
{
    if (text.size() <= 2 * MaximumLineSize)
        return singleLine(text);
    return beginning(text) + Ellipsis + singleLine(utf8End(text, MaximumLineSize));
}

bool looksEmpty(QStringView line)
{
    return std::ranges::all_of(line.toUcs4(), isInvisible);
}

} // namespace SingleLine
