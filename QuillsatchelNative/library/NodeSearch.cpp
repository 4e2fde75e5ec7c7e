#include "library/NodeSearch.h"

#include "support/Utf8.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

NodeSearch::NodeSearch(const std::vector<PromptTab> &tabs)
    : m_tabs(tabs)
{
}

void NodeSearch::forget()
{
    m_matcher.reset();
    m_tabPlaces.clear();
    m_hits = {};
}

void NodeSearch::find(std::string_view query, std::optional<std::size_t> activeTab)
{
    QueryMatcher matcher(m_folding, query);
    const bool isNarrower =
        m_matcher && m_activeTab == activeTab && matcher.isNarrowerThan(*m_matcher);
    if (!isNarrower)
        listTabs(activeTab);
    const std::vector<Place> places = isNarrower ? placesOfHits() : allPlaces();
    m_matcher.emplace(std::move(matcher));
    m_hits = {};
    search(places);
}

void NodeSearch::listTabs(std::optional<std::size_t> activeTab)
{
    m_activeTab = activeTab;
    m_tabPlaces.clear();
    Place next = 0;
    const auto list = [this, &next](const PromptTab &tab) {
        if (!tab.blocks.empty())
            m_tabPlaces.push_back({ &tab, next });
        next += static_cast<Place>(tab.blocks.size());
    };
    if (activeTab)
        list(m_tabs[*activeTab]);
    for (std::size_t index = 0; index < m_tabs.size(); ++index) {
        if (index != activeTab)
            list(m_tabs[index]);
    }
}

std::vector<NodeSearch::Place> NodeSearch::allPlaces() const
{
    std::size_t count = 0;
    for (const auto &tabPlaces : m_tabPlaces)
        count += tabPlaces.tab->blocks.size();
    std::vector<Place> places(count);
    std::iota(places.begin(), places.end(), Place { 0 });
    return places;
}

std::vector<NodeSearch::Place> NodeSearch::placesOfHits() const
{
    std::vector<Place> places;
    places.reserve(hitCount());
    for (const auto &hits : m_hits) {
        const auto middle = places.insert(places.end(), hits.begin(), hits.end());
        std::inplace_merge(places.begin(), middle, places.end());
    }
    return places;
}

/// `places` must ascend.
void NodeSearch::search(const std::vector<Place> &places)
{
    std::vector<MatchRank> nameRanks;
    auto next = m_tabPlaces.begin();
    for (const Place place : places) {
        while (next != m_tabPlaces.end() && next->first <= place) {
            nameRanks.assign(m_matcher->wordCount(), MatchRank::none);
            m_matcher->raiseRanks(next->tab->name, nameRanks);
            ++next;
        }
        const TabPlaces &current = *std::prev(next);
        const MatchRank found = rank(current.tab->blocks[place - current.first].text, nameRanks);
        if (found != MatchRank::none)
            hitsOf(found).push_back(place);
    }
}

/// The worst rank of all words, because each must match.
MatchRank NodeSearch::rank(std::string_view text, const std::vector<MatchRank> &nameRanks)
{
    m_ranks = nameRanks;
    m_matcher->raiseRanks(text, m_ranks);
    const auto worst = std::ranges::min_element(m_ranks);
    return worst == m_ranks.end() ? MatchRank::wholeWord : *worst;
}

std::vector<NodeSearch::Place> &NodeSearch::hitsOf(MatchRank rank)
{
    switch (rank) {
    case MatchRank::wholeWord:
        return m_hits[0];
    case MatchRank::wordPrefix:
        return m_hits[1];
    default:
        return m_hits[2];
    }
}

std::size_t NodeSearch::hitCount() const
{
    return m_hits[0].size() + m_hits[1].size() + m_hits[2].size();
}

NodeSearch::Node NodeSearch::node(std::size_t index) const
{
    auto hits = m_hits.begin();
    for (; index >= hits->size(); ++hits)
        index -= hits->size();
    const Place place = (*hits)[index];
    const auto next = std::ranges::upper_bound(m_tabPlaces, place, {}, &TabPlaces::first);
    const auto &[tab, first] = *std::prev(next);
    return { *tab, tab->blocks[place - first] };
}

NodeHit NodeSearch::hit(std::size_t index) const
{
    const auto [tab, block] = node(index);
    const std::size_t offset = m_matcher->firstMatch(block.text).value_or(0);
    return { .tabID = tab.id,
             .blockID = block.id,
             .color = block.color,
             .text = Excerpt::around(block.text, offset, *m_matcher),
             .tabName = Excerpt::around(tab.name, 0, *m_matcher) };
}

std::optional<TextRange> NodeSearch::firstMatch(std::size_t index) const
{
    return m_matcher->firstRange(node(index).block.text);
}
