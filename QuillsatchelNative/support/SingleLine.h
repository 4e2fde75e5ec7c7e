#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

/// Makes any text fit to be drawn on one line. A run of line breaks, control characters and
/// characters that turn the direction of what follows becomes one blank; other blanks stay as they
/// are. Of a text longer than any line on a screen only a part is looked at.
namespace SingleLine
{

/// The beginning of `text` (UTF-8), for lines that are cut off at their end.
QString beginning(std::string_view text);

/// `text` (UTF-8) for menus, which are as wide as their widest entry: at most 80 characters, the
/// last of them an ellipsis where there are more.
QString abridged(std::string_view text);

/// Both ends of `text` (UTF-8), for lines that are cut in the middle.
QString ends(std::string_view text);

/// Whether `line` shows nothing: it has only blanks, invisible characters and fillers, or no
/// characters.
bool looksEmpty(QStringView line);

} // namespace SingleLine
