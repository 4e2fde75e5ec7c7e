// Large libraries are loaded, edited and saved completely.

#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{

class SatchelStoreSizeTest : public SatchelStoreFixture
{
protected:
    /// Loads these tabs, makes a change, saves it, and expects the next start to load all of it.
    template <typename Change>
    void expectNothingLostAfter(const std::vector<PromptTab> &tabs, Change &&change)
    {
        writeFile(tabs);
        std::optional<SatchelStore> store(std::in_place, machine.platform);
        EXPECT_TRUE(store->tabs().get() == tabs) << "as loaded";
        std::forward<Change>(change)(*store);
        advance(SaveDelay);
        const auto saved = documentOf(*store);
        EXPECT_FALSE(saved.tabs == tabs);
        store.emplace(machine.platform);
        EXPECT_TRUE(documentOf(*store) == saved) << "at the next start";
    }
};

TEST_F(SatchelStoreSizeTest, KeepsANodeOfFiftyMegabytes)
{
    PromptBlock block { .text = {}, .color = BlockColor::red };
    block.text.resize(50'000'000, 'x');
    expectNothingLostAfter(
        { { .name = "Large", .blocks = { block } } },
        [&block](SatchelStore &store) { store.updateBlock(block.id, block.text + "/\n\u00E9"); });
}

TEST_F(SatchelStoreSizeTest, KeepsTenThousandTabs)
{
    std::vector<PromptTab> tabs(10'000);
    for (auto &tab : tabs)
        tab = { .name = "Tab", .blocks = { PromptBlock() } };
    expectNothingLostAfter(tabs, [&tabs](SatchelStore &store) {
        store.renameTab(tabs.back().id, "Last");
        store.deleteTab(tabs[5000].id);
        store.addTab();
    });
}

TEST_F(SatchelStoreSizeTest, KeepsAHundredThousandNodes)
{
    const PromptTab tab { .name = "Full", .blocks = std::vector<PromptBlock>(100'000) };
    std::vector tabs { tab };
    for (auto &block : tabs.front().blocks)
        block.id = QUuid::createUuid();
    expectNothingLostAfter(tabs, [&tabs](SatchelStore &store) {
        store.updateBlock(tabs.front().blocks.back().id, "last");
    });
}

TEST_F(SatchelStoreSizeTest, KeepsATabNameOfAMegabyte)
{
    const PromptTab tab { .name = std::string(1'000'000, 'W'), .blocks = {} };
    expectNothingLostAfter(
        { tab }, [&tab](SatchelStore &store) { store.renameTab(tab.id, tab.name + "\u0301"); });
}

} // namespace
