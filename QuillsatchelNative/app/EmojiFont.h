#pragma once

class QString;

/// The font for emoji. Qt looks for a character that the desktop's font lacks in all other fonts,
/// the nearest in style first, and so draws emoji with monochrome symbols although the machine has
/// a color font, which is never near in style.
namespace EmojiFont
{

/// Has emoji drawn with the font `family` in all texts, menus and tooltips. Needs the QApplication;
/// to be called before any window is made. Nothing changes if `family` is empty.
void apply(const QString &family);

} // namespace EmojiFont
