// However large a library is, it is loaded, edited and saved whole.

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
    /// Starts from these tabs, makes a change and saves it; the next start has to find all of it.
    template <typename Change>
    void expectWholeAfter(const std::vector<PromptTab> &tabs, Change &&change)
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

TEST_F(SatchelStoreSizeTest, ANodeOfFiftyMegabytesIsLoadedEditedAndSavedWhole)
{
    PromptBlock block { .text = {}, .color = BlockColor::red };
    block.text.resize(50'000'000, 'x');
    expectWholeAfter({ { .name = "Large", .blocks = { block } } }, [&block](SatchelStore &store) {
        store.updateBlock(block.id, block.text + "/\n\u00E9");
    });
}

TEST_F(SatchelStoreSizeTest, TenThousandTabsAreLoadedEditedAndSavedWhole)
{
    std::vector<PromptTab> tabs(10'000);
    for (auto &tab : tabs)
        tab = { .name = "Tab", .blocks = { PromptBlock() } };
    expectWholeAfter(tabs, [&tabs](SatchelStore &store) {
        store.renameTab(tabs.back().id, "Last");
        store.deleteTab(tabs[5000].id);
        store.addTab();
    });
}

TEST_F(SatchelStoreSizeTest, AHundredThousandNodesAreLoadedEditedAndSavedWhole)
{
    const PromptTab tab { .name = "Full", .blocks = std::vector<PromptBlock>(100'000) };
    std::vector tabs { tab };
    for (auto &block : tabs.front().blocks)
        block.id = QUuid::createUuid();
    expectWholeAfter(tabs, [&tabs](SatchelStore &store) {
        store.updateBlock(tabs.front().blocks.back().id, "last");
    });
}

TEST_F(SatchelStoreSizeTest, AMegabyteOfTabNameIsLoadedEditedAndSavedWhole)
{
    const PromptTab tab { .name = std::string(1'000'000, 'W'), .blocks = {} };
    expectWholeAfter({ tab },
                     [&tab](SatchelStore &store) { store.renameTab(tab.id, tab.name + "\u0301"); });
}

} // namespace
