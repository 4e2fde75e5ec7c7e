#pragma once

#include <QString>

#include <cstddef>
#include <string_view>

/// `text` (UTF-8) as a string of Qt's, whole: Qt's own conversion takes a U+FEFF at the beginning
/// for a byte order mark and drops it.
QString stringFromUtf8(std::string_view text);

/// At most `size` bytes from the beginning of `text` (UTF-8), none of which begin a code point that
/// they do not end.
std::string_view utf8Beginning(std::string_view text, std::size_t size);

/// The same from the end of `text`.
std::string_view utf8End(std::string_view text, std::size_t size);
