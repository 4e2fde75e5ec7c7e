#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

/// The emoji in texts whose font has monochrome emoji of its own, as DejaVu Sans has. Qt takes a
/// character from the first family of a font that has it, so these emoji need a format that names
/// the color font first.
namespace EmojiRanges
{

/// Whether the first family of `font` has emoji, and another family follows for them.
bool areNeeded(const QFont &font);

/// The emoji in `text` with their format. Empty if `font` needs none.
QList<QTextLayout::FormatRange> in(const QString &text, const QFont &font);

} // namespace EmojiRanges
