#pragma once

class QString;

/// The font for emoji. For characters that the desktop's font lacks, Qt prefers fonts of a similar
/// style. Colour fonts never are, so Qt would draw emoji as monochrome symbols.
namespace EmojiFont
{

/// Makes `family` the font for emoji in all texts, menus and tooltips. Does nothing if it is empty.
/// Call after creating the QApplication and before creating a window.
void apply(const QString &family);

} // namespace EmojiFont
