#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace
{

class SatchelStoreTabsTest : public SatchelStoreFixture
{
protected:
    SatchelStoreTabsTest() { writeFile(four, four[2].id); }

    static std::vector<std::string> names(const SatchelStore &store)
    {
        std::vector<std::string> names;
        std::ranges::transform(store.tabs().get(), std::back_inserter(names), &PromptTab::name);
        return names;
    }

    using Names = std::vector<std::string>;

    std::vector<PromptTab> four { { .name = "A", .blocks = {} },
                                  { .name = "B", .blocks = {} },
                                  { .name = "C", .blocks = {} },
                                  { .name = "D", .blocks = {} } };
    QUuid unknown = QUuid::createUuid();
};

TEST_F(SatchelStoreTabsTest, FindsTheActiveTab)
{
    const SatchelStore store(machine.platform);
    EXPECT_EQ(store.activeTabIndex(), 2U);
    ASSERT_TRUE(store.activeTab());
    EXPECT_EQ(*store.activeTab(), four[2]);
}

TEST_F(SatchelStoreTabsTest, FallsBackToTheFirstTabWithoutChangingTheActiveId)
{
    SatchelStore store(machine.platform);
    store.selectTab(unknown);
    EXPECT_EQ(store.activeTabIndex(), 0U);
    ASSERT_TRUE(store.activeTab());
    EXPECT_EQ(store.activeTab()->name, "A");
    EXPECT_EQ(store.activeTabID().get(), unknown);
}

TEST_F(SatchelStoreTabsTest, FindsTheFirstOfTabsWithEqualIds)
{
    four[3].id = four[1].id;
    writeFile(four, four[3].id);
    const SatchelStore store(machine.platform);
    EXPECT_EQ(store.activeTabIndex(), 1U);
    EXPECT_EQ(store.activeTab()->name, "B");
}

TEST_F(SatchelStoreTabsTest, AddsAnEmptyActiveTabAtTheEnd)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.addTab(); }));
    EXPECT_EQ(names(store), Names({ "A", "B", "C", "D", "New Tab" }));
    EXPECT_EQ(store.activeTabIndex(), 4U);
    EXPECT_TRUE(store.activeTab()->blocks.empty());
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreTabsTest, AddsTabsWithEqualNames)
{
    SatchelStore store(machine.platform);
    store.addTab();
    store.addTab();
    EXPECT_EQ(names(store), Names({ "A", "B", "C", "D", "New Tab", "New Tab" }));
    const auto &tabs = store.tabs().get();
    EXPECT_NE(tabs[4].id, tabs[5].id);
    EXPECT_EQ(store.activeTabID().get(), tabs[5].id);
}

TEST_F(SatchelStoreTabsTest, StoresTheNewNameUnchanged)
{
    SatchelStore store(machine.platform);
    for (const auto *const name : { "   ", "", " B\n", "\u00E9\U0001F600/\"" }) {
        EXPECT_TRUE(saves([&] { store.renameTab(four[1].id, name); }));
        EXPECT_EQ(names(store), Names({ "A", name, "C", "D" }));
        EXPECT_EQ(savedDocument(), documentOf(store));
    }
}

TEST_F(SatchelStoreTabsTest, SavesARenameToTheSameName)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.renameTab(four[1].id, "B"); }));
}

TEST_F(SatchelStoreTabsTest, RenamesOnlyTheFirstOfTabsWithEqualIds)
{
    four[3].id = four[1].id;
    writeFile(four);
    SatchelStore store(machine.platform);
    store.renameTab(four[1].id, "new");
    EXPECT_EQ(names(store), Names({ "A", "new", "C", "D" }));
}

TEST_F(SatchelStoreTabsTest, IgnoresARenameOfAnUnknownTab)
{
    SatchelStore store(machine.platform);
    const auto before = documentOf(store);
    EXPECT_FALSE(saves([&] { store.renameTab(unknown, "new"); }));
    EXPECT_EQ(documentOf(store), before);
}

TEST_F(SatchelStoreTabsTest, ActivatesTheFirstTabWhenTheActiveOneIsDeleted)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.deleteTab(four[2].id); }));
    EXPECT_EQ(names(store), Names({ "A", "B", "D" }));
    EXPECT_EQ(store.activeTabID().get(), four[0].id);
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreTabsTest, ActivatesTheNewFirstTabWhenTheFirstIsDeleted)
{
    SatchelStore store(machine.platform);
    store.selectTab(four[0].id);
    store.deleteTab(four[0].id);
    EXPECT_EQ(names(store), Names({ "B", "C", "D" }));
    EXPECT_EQ(store.activeTabID().get(), four[1].id);
}

TEST_F(SatchelStoreTabsTest, KeepsTheActiveTabWhenAnotherIsDeleted)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.deleteTab(four[0].id); }));
    EXPECT_EQ(store.activeTabID().get(), four[2].id);
    EXPECT_EQ(store.activeTabIndex(), 1U);
}

TEST_F(SatchelStoreTabsTest, KeepsTheLastTab)
{
    writeFile({ four[0] });
    SatchelStore store(machine.platform);
    const auto before = documentOf(store);
    EXPECT_FALSE(saves([&] { store.deleteTab(four[0].id); }));
    EXPECT_FALSE(saves([&] { store.deleteTab(unknown); }));
    EXPECT_EQ(documentOf(store), before);
}

TEST_F(SatchelStoreTabsTest, SavesEvenIfTheDeletedTabIsUnknown)
{
    SatchelStore store(machine.platform);
    const auto before = documentOf(store);
    EXPECT_TRUE(saves([&] { store.deleteTab(unknown); }));
    EXPECT_EQ(documentOf(store), before);
}

TEST_F(SatchelStoreTabsTest, KeepsAStaleActiveIdWhenATabIsDeleted)
{
    SatchelStore store(machine.platform);
    store.selectTab(unknown);
    store.deleteTab(four[0].id);
    EXPECT_EQ(store.activeTabID().get(), unknown);
    EXPECT_EQ(store.activeTab()->name, "B");
}

TEST_F(SatchelStoreTabsTest, DeletesEveryTabWithTheIdAndKeepsTheOrderOfTheRest)
{
    four[3].id = four[0].id;
    writeFile(four, four[0].id);
    SatchelStore store(machine.platform);
    store.deleteTab(four[0].id);
    EXPECT_EQ(names(store), Names({ "B", "C" }));
    EXPECT_EQ(store.activeTabID().get(), four[1].id);
}

TEST_F(SatchelStoreTabsTest, DeletesByAReferenceToTheTabsOwnId)
{
    four[2].id = four[0].id;
    writeFile(four, four[0].id);
    SatchelStore store(machine.platform);
    store.deleteTab(store.tabs().get().front().id);
    EXPECT_EQ(names(store), Names({ "B", "D" }));
    EXPECT_EQ(store.activeTabID().get(), four[1].id);
}

TEST_F(SatchelStoreTabsTest, SurvivesDeletingAllTabsByTheirSharedId)
{
    for (auto &tab : four)
        tab.id = four.front().id;
    writeFile(four);
    SatchelStore store(machine.platform);
    store.deleteTab(four.front().id);
    EXPECT_TRUE(store.tabs().get().empty());
    EXPECT_FALSE(store.activeTabIndex());
    EXPECT_EQ(store.activeTab(), nullptr);

    store.addBlock();
    store.deleteBlock(unknown);
    store.updateBlock(unknown, "text");
    store.moveBlock(unknown, 1);
    store.copyBlock(unknown);
    advance(SaveDelay);
    EXPECT_TRUE(store.tabs().get().empty());

    store.addTab();
    store.addBlock();
    EXPECT_EQ(names(store), Names({ "New Tab" }));
    EXPECT_EQ(store.activeTab()->blocks.size(), 1U);
}

TEST_F(SatchelStoreTabsTest, SelectsATab)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.selectTab(four[3].id); }));
    EXPECT_EQ(store.activeTab()->name, "D");
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreTabsTest, SavesASelectionOfTheActiveTab)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.selectTab(four[2].id); }));
}

TEST_F(SatchelStoreTabsTest, SelectsAnUnknownTab)
{
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.selectTab(unknown); }));
    EXPECT_EQ(store.activeTabID().get(), unknown);
    ASSERT_TRUE(savedDocument());
    EXPECT_EQ(savedDocument()->activeTabID, unknown);
}

TEST_F(SatchelStoreTabsTest, AnnouncesEveryChangeBeforeItHappens)
{
    SatchelStore store(machine.platform);
    std::vector<SatchelDocument> announced;
    const Cancellable subscription(
        QObject::connect(&store, &ObservableObject::objectWillChange,
                         [&] { announced.push_back(documentOf(store)); }));
    const auto before = documentOf(store);

    store.selectTab(four[0].id);
    EXPECT_EQ(announced, std::vector({ before }));

    announced.clear();
    const auto selected = documentOf(store);
    store.renameTab(four[0].id, "new");
    EXPECT_EQ(announced, std::vector({ selected }));

    announced.clear();
    store.renameTab(unknown, "new");
    EXPECT_TRUE(announced.empty());
}

TEST_F(SatchelStoreTabsTest, DeliversTheNewTabs)
{
    SatchelStore store(machine.platform);
    std::vector<std::size_t> counts;
    const auto subscription =
        store.tabs().sink([&](const auto &tabs) { counts.push_back(tabs.size()); });
    store.addTab();
    store.deleteTab(four[0].id);
    EXPECT_EQ(counts, std::vector<std::size_t>({ 4, 5, 4 }));
}

} // namespace
