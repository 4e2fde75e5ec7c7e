#include "support/SingleLine.h"

#include "support/Utf8.h"

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
    return character.category() == QChar::Other_Control || turnsDirection(character);
}

QString singleLine(std::string_view text)
{
    QString line = stringFromUtf8(text);
    std::ranges::replace_if(line, isHarmful, QLatin1Char(' '));
    return line.simplified();
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

} // namespace SingleLine
