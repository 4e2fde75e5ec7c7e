#pragma once

#include <string_view>

/// `text` (UTF-8) without Unicode white space at its ends.
std::string_view trimmed(std::string_view text);

/// Whether `text` (UTF-8) contains Unicode white space.
bool containsWhitespace(std::string_view text);
