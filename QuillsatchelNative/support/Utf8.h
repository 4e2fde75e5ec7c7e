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

/// The bytes of the first code point of `text` (UTF-8, not empty). Bytes that are not UTF-8 count
/// as some code point.
std::string_view firstCodePoint(std::string_view text);

/// The bytes of the last code point of `text` (UTF-8); empty for an empty text.
std::string_view lastCodePoint(std::string_view text);

/// The code point with these bytes (UTF-8); any valid one if they are not UTF-8.
char32_t decodedCodePoint(std::string_view bytes);
