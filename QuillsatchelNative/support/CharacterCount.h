#pragma once

#include <cstddef>
#include <string_view>

/// How many characters a reader sees in `text` (UTF-8): grapheme clusters, so that an accented
/// letter or a family of emoji is one. Counting stops at `limit`, whatever follows.
std::size_t characterCount(std::string_view text, std::size_t limit);
