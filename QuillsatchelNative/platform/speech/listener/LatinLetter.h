#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// A letter of the languages that are written with Latin letters.
struct LatinLetter {
    char base = 0; ///< the lower case letter without accents; 0 for an accent of the letter before
    bool isCapital = false;
    std::size_t size = 1; ///< in bytes

    bool operator==(const LatinLetter &) const = default;

    /// The first character of `text` (UTF-8); none if that is not a Latin letter.
    static std::optional<LatinLetter> first(std::string_view text);
};
