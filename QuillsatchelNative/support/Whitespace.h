#pragma once

#include <string_view>

/// `text` (UTF-8) without the white space and line breaks, in Unicode's sense, at both its ends.
std::string_view trimmed(std::string_view text);

/// Whether any white space or line break, in Unicode's sense, stands in `text` (UTF-8).
bool containsWhitespace(std::string_view text);
