#pragma once

#include "library/MatchRank.h"
#include "library/SearchWord.h"
#include "library/TextRange.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

class TextFolding;

/// The words of a query, and where they match in one text.
class QueryMatcher
{
public:
    /// `folding` must outlive the matcher.
    QueryMatcher(TextFolding &folding, std::string_view query);

    std::size_t wordCount() const { return m_words.size(); }

    /// Whether every text that matches this query also matches `earlier`.
    bool isNarrowerThan(const QueryMatcher &earlier) const;

    /// Raises the rank of each word to that of its best match in `text`, if that is better.
    void raiseRanks(std::string_view text, std::vector<MatchRank> &ranks) const;

    /// The earliest match of any word in `text` (UTF-8), as an offset in bytes.
    std::optional<std::size_t> firstMatch(std::string_view text) const;

    /// The first of the `matches` in `text` (UTF-8).
    std::optional<TextRange> firstRange(std::string_view text) const;

    /// The matches of all words in `text`, extended to whole graphemes and joined where they touch.
    std::vector<TextRange> matches(const QString &text) const;

private:
    bool raiseRanksFolded(std::string_view folded, std::vector<MatchRank> &ranks) const;
    std::optional<std::size_t> firstMatchFolded(std::string_view folded) const;
    std::vector<TextRange> codePointRanges(std::string_view text) const;

    TextFolding &m_folding;
    std::vector<SearchWord> m_words; // longest first, because these are missing most often
};
