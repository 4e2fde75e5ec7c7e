#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The font for emoji. For characters that the desktop's font lacks, Qt prefers fonts of a similar
/// style. Colour fonts never are, so Qt would draw emoji as monochrome symbols.
namespace EmojiFont
{

/// Makes `family` the font for emoji in all texts, menus and tooltips. Does nothing if it is empty.
/// `realFamily` returns the family of the installed font for a list of families, slowly. Call after
/// creating the QApplication and before creating a window.
void apply(const QString &family,
           const std::function<QString(const QStringList &families)> &realFamily);

} // namespace EmojiFont
