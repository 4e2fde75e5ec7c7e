#pragma once

#include "library/MatchRank.h"
#include "library/NodeHit.h"
#include "library/PromptTab.h"
#include "library/QueryMatcher.h"
#include "library/TextRange.h"
#include "support/TextFolding.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/// Finds nodes in all tabs. A node matches if each word of the query occurs in its text or in its
/// tab's name, in any order; without words, every node matches. Case, accents, width and the
/// composition of letters are ignored (see `TextFolding`).
///
/// Nodes in which all words match whole words come first, then those in which all words match
/// beginnings of words, then the others. Within each group, the nodes of the active tab come first,
/// then the others in the order of tabs and nodes.
///
/// A query that extends the last one searches only the last hits. A hit needs four bytes; texts and
/// excerpts are not stored. One thread only.
class NodeSearch
{
public:
    /// `tabs` must outlive the search. Call `forget` when they have changed.
    explicit NodeSearch(const std::vector<PromptTab> &tabs);

    /// Finds the nodes that match `query` (UTF-8), which replace the earlier hits. `activeTab` is
    /// the index of the active tab.
    void find(std::string_view query, std::optional<std::size_t> activeTab);

    /// Drops the hits, because the tabs have changed.
    void forget();

    std::size_t hitCount() const;

    /// The hit at `index`, best first. `index` must be less than `hitCount`.
    NodeHit hit(std::size_t index) const;

    /// The first match in the text of the hit at `index`, extended to whole graphemes; none if only
    /// the tab's name matches. Takes longer for long texts.
    std::optional<TextRange> firstMatch(std::size_t index) const;

private:
    /// The place of a node among all nodes, those of the active tab first.
    using Place = std::uint32_t;

    struct TabPlaces {
        const PromptTab *tab;
        Place first;
    };

    struct Node {
        const PromptTab &tab;
        const PromptBlock &block;
    };

    void listTabs(std::optional<std::size_t> activeTab);
    std::vector<Place> allPlaces() const;
    std::vector<Place> placesOfHits() const;
    void search(const std::vector<Place> &places);
    MatchRank rank(std::string_view text, const std::vector<MatchRank> &nameRanks);
    std::vector<Place> &hitsOf(MatchRank rank);
    Node node(std::size_t index) const;

    const std::vector<PromptTab> &m_tabs;
    mutable TextFolding m_folding;         // its cache
    std::optional<QueryMatcher> m_matcher; // none if there are no hits to narrow
    std::optional<std::size_t> m_activeTab;
    std::vector<TabPlaces> m_tabPlaces;       // tabs with nodes, ascending
    std::array<std::vector<Place>, 3> m_hits; // by rank, best first; each ascending
    std::vector<MatchRank> m_ranks;           // of each word in the current node
};
