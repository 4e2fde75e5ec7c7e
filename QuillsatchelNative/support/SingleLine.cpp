#include "support/SingleLine.h"

#include "support/Utf8.h"

#include <algorithm>

namespace SingleLine
{

namespace
{

constexpr std::size_t MoreThanFits = 1024;

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
    return singleLine(text.substr(0, MoreThanFits));
}

QString ends(std::string_view text)
{
    if (text.size() <= 2 * MoreThanFits)
        return singleLine(text);
    return beginning(text) + QChar(0x2026) + singleLine(text.substr(text.size() - MoreThanFits));
}

} // namespace SingleLine
