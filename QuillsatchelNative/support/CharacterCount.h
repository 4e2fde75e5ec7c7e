#pragma once

#include <cstddef>
#include <string_view>

/// The number of graphemes in `text` (UTF-8), at most `limit`. An accented letter or a family of
/// emoji counts as one.
std::size_t characterCount(std::string_view text, std::size_t limit);
