#include "support/SingleLine.h"

#include "support/Utf8.h"

#include <QList>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace SingleLine
{

namespace
{

constexpr std::size_t MoreThanFits = 1024; // bytes
constexpr int MostInMenus = 80;            // characters
constexpr QChar Ellipsis(0x2026);

bool turnsDirection(QChar character)
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

bool isHarmful(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return turnsDirection(character);
    }
}

QString singleLine(std::string_view text)
{
    QString line = stringFromUtf8(text);
    const auto isBoth = [](QChar first, QChar second) {
        return isHarmful(first) && isHarmful(second);
    };
    line.erase(std::unique(line.begin(), line.end(), isBoth), line.end());
    std::ranges::replace_if(line, isHarmful, QLatin1Char(' '));
    return line;
}

/// Characters that show nothing although Unicode does not class them as blanks or formats: fillers,
/// the empty Braille pattern, variation selectors and the grapheme joiner.
bool isFiller(char32_t character)
{
    constexpr std::u32string_view Fillers = U"\u034F\u115F\u1160\u2800\u3164\uFFA0";
    return Fillers.find(character) != Fillers.npos ||
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
    return singleLine(utf8Beginning(text, MoreThanFits));
}

QString abridged(std::string_view text)
{
    QString line = beginning(text);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
    qsizetype lastPlace = 0; // where the last character begins that there is room for
    for (int count = 1; finder.toNextBoundary() != -1; ++count) {
        if (count == MostInMenus - 1)
            lastPlace = finder.position();
        if (count > MostInMenus)
            return line.left(lastPlace) + Ellipsis;
    }
    return line;
}

QString ends(std::string_view text)
{
    if (text.size() <= 2 * MoreThanFits)
        return singleLine(text);
    return beginning(text) + Ellipsis + singleLine(utf8End(text, MoreThanFits));
}

bool looksEmpty(QStringView line)
{
    return std::ranges::all_of(line.toUcs4(), isInvisible);
}

} // namespace SingleLine
