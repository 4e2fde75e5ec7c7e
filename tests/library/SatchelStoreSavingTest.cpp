#include "fakes/UnprivilegedScope.h"
#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

using SatchelStoreSavingTest = SatchelStoreFixture;

TEST_F(SatchelStoreSavingTest, SavesAQuarterSecondAfterAChange)
{
    SatchelStore store(machine.platform);
    store.addBlock();
    advance(249ms);
    EXPECT_FALSE(fs::exists(file));
    advance(1ms);
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreSavingTest, SavesTenQuickChangesOnce)
{
    SatchelStore store(machine.platform);
    store.addBlock();
    const auto block = store.activeTab()->blocks.front().id;
    std::string text;
    for (int change = 0; change < 9; ++change) {
        advance(100ms);
        text += "x";
        store.updateBlock(block, text);
    }
    advance(249ms);
    EXPECT_FALSE(fs::exists(file));
    advance(1ms);
    ASSERT_TRUE(savedDocument());
    EXPECT_EQ(savedDocument()->tabs.front().blocks.front().text, text);

    fs::remove(file);
    advance(Long);
    EXPECT_FALSE(fs::exists(file)) << "saved more than once";
}

TEST_F(SatchelStoreSavingTest, SavesAgainAfterTheNextChange)
{
    SatchelStore store(machine.platform);
    for (const auto *const name : { "first", "second", "third" }) {
        EXPECT_TRUE(saves([&] { store.renameTab(*store.activeTabID().get(), name); }));
        ASSERT_TRUE(savedDocument());
        EXPECT_EQ(savedDocument()->tabs.front().name, name);
    }
}

TEST_F(SatchelStoreSavingTest, SavesNothingAfterTheStoreIsDestroyed)
{
    {
        SatchelStore store(machine.platform);
        store.addTab();
        store.addBlock();
        store.copyBlock(store.activeTab()->blocks.front().id);
        advance(249ms);
    }
    advance(Long);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(SatchelStoreSavingTest, WritesEqualLibrariesToEqualBytes)
{
    writeFile(ExampleLibrary::json);
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.selectTab(*store.activeTabID().get()); }));
    EXPECT_EQ(fileText(), ExampleLibrary::json);
    EXPECT_TRUE(saves([&] { store.selectTab(*store.activeTabID().get()); }));
    EXPECT_EQ(fileText(), ExampleLibrary::json);
}

TEST_F(SatchelStoreSavingTest, DropsUnknownKeys)
{
    writeFile(ExampleLibrary::with("\"tabs\"", R"("extra" : 1, "tabs")"));
    SatchelStore store(machine.platform);
    EXPECT_TRUE(saves([&] { store.selectTab(*store.activeTabID().get()); }));
    EXPECT_EQ(fileText(), ExampleLibrary::json);
}

TEST_F(SatchelStoreSavingTest, ReplacesAFileWithoutTabsOnlyAfterAChange)
{
    writeFile(R"({"tabs" : []})");
    SatchelStore store(machine.platform);
    advance(Long);
    EXPECT_EQ(fileText(), R"({"tabs" : []})");
    store.renameTab(*store.activeTabID().get(), "Prompts");
    advance(SaveDelay);
    EXPECT_EQ(savedDocument(), documentOf(store));
    EXPECT_FALSE(fs::exists(folder / "prompts.json.unreadable"));
}

TEST_F(SatchelStoreSavingTest, LoadsOnTheNextStartWhatItSaved)
{
    std::optional<SatchelStore> store;
    store.emplace(machine.platform);
    store->addTab();
    store->addBlock();
    store->addBlock();
    const auto block = store->activeTab()->blocks.back().id;
    store->updateBlock(block, "\u00E9 / \"quoted\"\n\tand more");
    store->setBlockColor(block, BlockColor::purple);
    const auto before = documentOf(*store);
    advance(SaveDelay);
    store.reset();

    store.emplace(machine.platform);
    EXPECT_EQ(documentOf(*store), before);
}

TEST_F(SatchelStoreSavingTest, RetriesAtTheNextChange)
{
    writeFile(ExampleLibrary::json);
    const UnprivilegedScope scope(machine.directory.path().toStdString());
    TestFiles::setMode(folder, 0500);
    SatchelStore store(machine.platform);
    store.addTab();
    advance(SaveDelay);
    TestFiles::setMode(folder, 0700);
    advance(Long);
    EXPECT_EQ(fileText(), ExampleLibrary::json) << "there is no retry";

    store.addBlock();
    advance(SaveDelay);
    EXPECT_EQ(savedDocument(), documentOf(store));
}

} // namespace
