#pragma once

#include "library/TextRange.h"

#include <QString>

#include <cstddef>
#include <string_view>
#include <vector>

class QueryMatcher;

/// A part of a text on a single line, for display. Runs of white space are one space. It is cut
/// between graphemes, and has an ellipsis where it was cut.
struct Excerpt {
    QString text;
    std::vector<TextRange> emphasised {}; ///< the matches in `text`, ascending, not overlapping

    /// The part of `text` (UTF-8) around `offset`, with some words before it.
    static Excerpt around(std::string_view text, std::size_t offset, const QueryMatcher &matcher);

    bool operator==(const Excerpt &) const = default;
};
