#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

/// Finds the emoji in texts whose font has monochrome emoji, like DejaVu Sans. Qt takes a character
/// from the first family that has it, so these emoji need a format that lists the colour font
/// first.
namespace EmojiRanges
{

/// Whether the first family of `font` has emoji and another family follows.
bool areNeeded(const QFont &font);

/// The emoji in `text` with their format. Empty if `font` needs none.
QList<QTextLayout::FormatRange> in(const QString &text, const QFont &font);

} // namespace EmojiRanges
