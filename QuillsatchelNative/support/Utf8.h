#pragma once

#include <QString>

#include <cstddef>
#include <string_view>

/// Converts `text` (UTF-8). Unlike QString::fromUtf8, keeps a U+FEFF at the beginning.
QString stringFromUtf8(std::string_view text);

/// At most the first `size` bytes of `text` (UTF-8), without an incomplete code point at the end.
std::string_view utf8Beginning(std::string_view text, std::size_t size);

/// At most the last `size` bytes of `text` (UTF-8), without an incomplete code point at the start.
std::string_view utf8End(std::string_view text, std::size_t size);
