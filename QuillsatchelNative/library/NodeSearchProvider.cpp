#include "library/NodeSearchProvider.h"

#include "library/NodeSearch.h"
#include "library/SatchelStore.h"
#include "support/CharacterCount.h"
#include "support/SingleLine.h"
#include "support/TextFolding.h"
#include "support/Utf8.h"
#include "support/Uuid.h"
#include "support/Whitespace.h"

#include <algorithm>
#include <array>

namespace
{

constexpr std::size_t MaximumResults = 10;
constexpr std::size_t MinimumLetters = 3;
constexpr std::size_t MaximumQuerySize = 1024; // bytes; the search needs time for every word
constexpr char Separator = '/';                // of the ids of tab and node

/// Where a node is. Its own id may not be unique in a file that another program wrote.
struct NodePlace {
    QUuid tabID;
    QUuid blockID;
};

std::string textOf(const NodePlace &place)
{
    const auto tab = uuidText(place.tabID);
    const auto block = uuidText(place.blockID);
    return std::string(tab.begin(), tab.end()) + Separator +
           std::string(block.begin(), block.end());
}

std::optional<NodePlace> placeFromText(std::string_view text)
{
    const auto separator = text.find(Separator);
    if (separator == std::string_view::npos)
        return std::nullopt;
    const auto tab = uuidFromText(text.substr(0, separator));
    const auto block = uuidFromText(text.substr(separator + 1));
    return tab && block ? std::optional(NodePlace { *tab, *block }) : std::nullopt;
}

// Counts what the search compares: without white space and invisible characters.
bool isSearchable(std::string_view query)
{
    if (query.size() > MaximumQuerySize)
        return false;
    TextFolding folding;
    QString letters = stringFromUtf8(folding.fold(query));
    letters.removeIf([](QChar c) { return c.isSpace(); });
    return characterCount(letters.toStdString(), MinimumLetters) == MinimumLetters;
}

QString visible(std::string_view line, const QString &placeholder)
{
    const QString text = SingleLine::abridged(line);
    return SingleLine::looksEmpty(text) ? placeholder : text;
}

std::string_view firstLine(std::string_view text)
{
    text = trimmed(text);
    return trimmed(text.substr(0, text.find_first_of("\r\n")));
}

} // namespace

NodeSearchProvider::NodeSearchProvider(SatchelStore &store)
    : m_store(store)
{
}

std::vector<SearchResult> NodeSearchProvider::find(std::string_view query) const
{
    if (!isSearchable(query))
        return {};
    NodeSearch search(m_store.tabs().get());
    search.find(query, m_store.activeTabIndex());
    std::vector<SearchResult> results;
    for (std::size_t i = 0; i < std::min(search.hitCount(), MaximumResults); ++i) {
        const NodeHit hit = search.hit(i);
        if (auto found = result(hit.tabID, hit.blockID))
            results.push_back(std::move(*found));
    }
    return results;
}

std::optional<SearchResult> NodeSearchProvider::result(std::string_view id) const
{
    const auto place = placeFromText(id);
    return place ? result(place->tabID, place->blockID) : std::nullopt;
}

std::optional<SearchResult> NodeSearchProvider::result(QUuid tabID, QUuid blockID) const
{
    const auto *const tab = m_store.tab(tabID);
    const auto *const block = m_store.block(tabID, blockID);
    if (!block)
        return std::nullopt;
    return SearchResult { .id = textOf({ tabID, blockID }),
                          .name = visible(firstLine(block->text), tr("Empty node")),
                          .description = visible(tab->name, tr("Untitled")),
                          .text = block->text };
}

void NodeSearchProvider::copy(std::string_view id)
{
    if (const auto place = placeFromText(id))
        m_store.copyBlock(place->tabID, place->blockID);
}

void NodeSearchProvider::show(std::string_view id)
{
    const auto place = placeFromText(id);
    if (place && m_store.block(place->tabID, place->blockID))
        onShow(place->tabID, place->blockID);
}

void NodeSearchProvider::showAll(std::string_view query)
{
    onShowAll(stringFromUtf8(query));
}
