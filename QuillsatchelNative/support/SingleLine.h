#pragma once

#include <QString>

#include <string_view>

/// Texts that come from anywhere, made fit to be drawn on one line: line breaks, control characters
/// and characters that turn the direction of what follows become blanks, and of a text longer than
/// any line on a screen only a part is looked at.
namespace SingleLine
{

/// The beginning of `text` (UTF-8), for lines that are cut off at their end.
QString beginning(std::string_view text);

/// `text` (UTF-8) for menus, which are as wide as their widest entry: at most 80 characters, the
/// last of them an ellipsis where there are more.
QString abridged(std::string_view text);

/// Both ends of `text` (UTF-8), for lines that are cut in the middle.
QString ends(std::string_view text);

} // namespace SingleLine
