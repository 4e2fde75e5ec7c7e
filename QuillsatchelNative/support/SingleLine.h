#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

/// Converts text for display on a single line. A run of line breaks, control characters and
/// bidirectional controls becomes one space; other white space is unchanged. Of long texts, only as
/// much is converted as fits on a screen.
namespace SingleLine
{

/// The beginning of `text` (UTF-8), for lines that are elided at the end.
QString beginning(std::string_view text);

/// `text` (UTF-8) for menus, which are as wide as their widest entry: at most 80 graphemes, of
/// which the last is an ellipsis if the text is longer.
QString abridged(std::string_view text);

/// Both ends of `text` (UTF-8), for lines that are elided in the middle.
QString ends(std::string_view text);

/// Whether `line` has no visible characters.
bool looksEmpty(QStringView line);

} // namespace SingleLine
