#pragma once

#include "library/BytePattern.h"
#include "library/MatchRank.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A word of a query. Searches folded texts (see `TextFolding`), and unfolded ones that are ASCII.
class SearchWord
{
public:
    /// `folded` is the folded word, not empty.
    explicit SearchWord(std::string folded);

    const std::string &text() const { return m_text; }

    /// The offset of the first match at or after `from`, or npos. Matches may overlap.
    std::size_t find(std::string_view text, std::size_t from = 0) const;

    /// The rank of the best match in `text`. Letters, digits and marks make words.
    MatchRank bestRank(std::string_view text) const;

private:
    template <typename Visit>
    void forEachMatch(std::string_view text, std::size_t from, Visit &&visit) const;
    template <typename Visit>
    bool visitMatches(std::uint64_t candidates, std::string_view text, std::size_t at,
                      Visit &&visit) const;
    std::uint64_t candidates(std::string_view text, std::size_t at) const;
    bool matches(std::string_view text, std::size_t at) const;
    MatchRank rank(std::string_view text, std::size_t at) const;

    std::string m_text;
    std::size_t m_firstEnd; // offset of the last byte of the first letter
    BytePattern m_first;    // that byte, because letters of a script begin with the same bytes
    BytePattern m_last;     // the last byte
};
