// A search finds what a simple implementation of the same rules finds, also while the query grows.
#include "Expect.h"
#include "FuzzedValues.h"
#include "library/NodeSearch.h"
#include "library/ReferenceNodeSearch.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <vector>

namespace
{

std::vector<PromptTab> fuzzedTabs(FuzzedDataProvider &data)
{
    constexpr std::size_t MaximumTabs = 3;
    constexpr std::size_t MaximumNodes = 5;
    std::vector<PromptTab> tabs(data.ConsumeIntegralInRange<std::size_t>(1, MaximumTabs));
    for (auto &tab : tabs) {
        tab.name = FuzzedValues::text(data);
        tab.blocks.resize(data.ConsumeIntegralInRange<std::size_t>(0, MaximumNodes));
        for (auto &block : tab.blocks)
            block.text = FuzzedValues::text(data);
    }
    return tabs;
}

ReferenceNodeSearch::Position position(const std::vector<PromptTab> &tabs, const NodeHit &hit)
{
    const auto tab = std::ranges::find(tabs, hit.tabID, &PromptTab::id);
    const auto block = std::ranges::find(tab->blocks, hit.blockID, &PromptBlock::id);
    return { static_cast<std::size_t>(tab - tabs.begin()),
             static_cast<std::size_t>(block - tab->blocks.begin()) };
}

void expectRanges(const Excerpt &excerpt)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, excerpt.text);
    qsizetype end = -1;
    for (const auto &range : excerpt.emphasised) {
        expect(range.start > end && range.length > 0, "ranges ascend and do not touch");
        end = range.start + range.length;
        expect(end <= excerpt.text.size(), "a range is in the text");
        finder.setPosition(range.start);
        expect(finder.isAtBoundary(), "a range starts at a grapheme");
        finder.setPosition(end);
        expect(finder.isAtBoundary(), "a range ends at a grapheme");
    }
}

void expectMatch(const NodeSearch &search, std::size_t index, const std::string &text)
{
    const auto range = search.firstMatch(index);
    if (!range)
        return;
    expect(range->start >= 0 && range->length > 0, "a match is not empty");
    expect(range->start + range->length <= stringFromUtf8(text).size(), "a match is in its text");
}

void expectHits(const NodeSearch &search, const std::vector<PromptTab> &tabs,
                const std::vector<ReferenceNodeSearch::Position> &expected)
{
    expect(search.hitCount() == expected.size(), "the simple search finds as many nodes");
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const NodeHit hit = search.hit(index);
        const auto found = position(tabs, hit);
        expect(found == expected[index], "the simple search finds the same node");
        expectRanges(hit.text);
        expectRanges(hit.tabName);
        expectMatch(search, index, tabs[found.first].blocks[found.second].text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const std::vector<PromptTab> tabs = fuzzedTabs(data);
    const auto activeTab = data.ConsumeIntegralInRange<std::size_t>(0, tabs.size() - 1);
    NodeSearch search(tabs);
    QString query;
    for (int round = 0; round < 3; ++round) {
        query += QString::fromStdString(FuzzedValues::text(data)).left(20);
        query = QString::fromUtf8(query.toUtf8()); // replaces half a surrogate pair
        search.find(query.toStdString(), activeTab);
        expectHits(search, tabs, ReferenceNodeSearch::find(tabs, activeTab, query));
    }
    return 0;
}
