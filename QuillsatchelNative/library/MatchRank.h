#pragma once

#include <cstdint>

/// How well a word matches a text. Better matches compare greater.
enum class MatchRank : std::uint8_t {
    none,
    inside,     ///< within a word, or across words
    wordPrefix, ///< at the beginning of a word
    wholeWord
};
