#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>

namespace
{

namespace fs = std::filesystem;

class SatchelStoreLoadingTest : public SatchelStoreFixture
{
protected:
    static void expectDefaultLibrary(const SatchelStore &store)
    {
        const auto &tabs = store.tabs().get();
        ASSERT_EQ(tabs.size(), 1U);
        EXPECT_EQ(tabs.front().name, "Prompts");
        EXPECT_TRUE(tabs.front().blocks.empty());
        EXPECT_FALSE(tabs.front().id.isNull());
        EXPECT_EQ(store.activeTabID().get(), tabs.front().id);
        EXPECT_FALSE(store.copiedBlockID().get());
    }

    void expectDefaultLibraryFrom(std::string_view bytes)
    {
        writeFile(bytes);
        const SatchelStore store(machine.platform);
        expectDefaultLibrary(store);
        advance(Long);
        EXPECT_EQ(fileText(), bytes) << "nothing is written before something changes";
    }
};

TEST_F(SatchelStoreLoadingTest, CreatesTheFolderButNoFileOnTheFirstLaunch)
{
    const SatchelStore store(machine.platform);
    expectDefaultLibrary(store);
    EXPECT_TRUE(fs::is_directory(folder));
    advance(Long);
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(SatchelStoreLoadingTest, SavesTheDefaultLibraryAfterTheFirstChange)
{
    SatchelStore store(machine.platform);
    store.renameTab(store.tabs().get().front().id, "Renamed");
    advance(SaveDelay);
    const auto saved = savedDocument();
    ASSERT_TRUE(saved);
    EXPECT_EQ(*saved, documentOf(store));
    ASSERT_EQ(saved->tabs.size(), 1U);
    EXPECT_EQ(saved->tabs.front().name, "Renamed");
}

TEST_F(SatchelStoreLoadingTest, KeepsThePermissionsOfAnExistingFolder)
{
    fs::create_directory(folder);
    TestFiles::setMode(folder, 0750);
    const SatchelStore store(machine.platform);
    EXPECT_EQ(TestFiles::mode(folder), 0750U);
}

TEST_F(SatchelStoreLoadingTest, CreatesNewIdsForEveryDefaultLibrary)
{
    const SatchelStore first(machine.platform);
    const SatchelStore second(machine.platform);
    EXPECT_NE(first.activeTabID().get(), second.activeTabID().get());
}

TEST_F(SatchelStoreLoadingTest, ReadsTheLibrary)
{
    writeFile(ExampleLibrary::json);
    const SatchelStore store(machine.platform);
    EXPECT_EQ(documentOf(store), ExampleLibrary::document());
    EXPECT_FALSE(store.copiedBlockID().get());
}

TEST_F(SatchelStoreLoadingTest, WritesNothingOnLoading)
{
    const auto text = "  " + std::string(ExampleLibrary::json) + "\n";
    writeFile(text);
    const SatchelStore store(machine.platform);
    advance(Long);
    EXPECT_EQ(fileText(), text);
}

TEST_F(SatchelStoreLoadingTest, KeepsEmptyNamesAndDuplicateIds)
{
    const PromptBlock block { .text = "text", .color = BlockColor::blue };
    const PromptTab tab { .name = " ", .blocks = { block, block } };
    const PromptTab unnamed { .name = "", .blocks = { block } };
    writeFile({ tab, unnamed, tab }, tab.id);
    const SatchelStore store(machine.platform);
    EXPECT_EQ(store.tabs().get(), std::vector({ tab, unnamed, tab }));
    EXPECT_EQ(store.activeTabID().get(), tab.id);
}

TEST_F(SatchelStoreLoadingTest, KeepsAnActiveTabThatIsNotTheFirst)
{
    const PromptTab first;
    const PromptTab second;
    writeFile({ first, second }, second.id);
    const SatchelStore store(machine.platform);
    EXPECT_EQ(store.activeTabID().get(), second.id);
}

TEST_F(SatchelStoreLoadingTest, ActivatesTheFirstTabIfTheFileNamesNone)
{
    const PromptTab first;
    const PromptTab second;
    for (const auto &activeTabID : { std::optional<QUuid>(), std::optional(QUuid::createUuid()) }) {
        writeFile({ first, second }, activeTabID);
        const SatchelStore store(machine.platform);
        EXPECT_EQ(store.activeTabID().get(), first.id);
        EXPECT_EQ(store.tabs().get().size(), 2U);
    }
}

TEST_F(SatchelStoreLoadingTest, ReadsANullActiveTab)
{
    writeFile(ExampleLibrary::with("\"A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D\"", "null"));
    const SatchelStore store(machine.platform);
    EXPECT_EQ(documentOf(store), ExampleLibrary::document());
}

TEST_F(SatchelStoreLoadingTest, FallsBackToTheDefaultLibraryWithoutTabs)
{
    expectDefaultLibraryFrom(R"({"tabs" : []})");
    expectDefaultLibraryFrom(
        R"({"activeTabID" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D", "tabs" : []})");
}

TEST_F(SatchelStoreLoadingTest, FallsBackToTheDefaultLibraryIfTheFileIsInvalid)
{
    expectDefaultLibraryFrom("no json");
    expectDefaultLibraryFrom(ExampleLibrary::with("\"none\"", "\"grey\""));
}

using SatchelStoreLoadingDeathTest = SatchelStoreLoadingTest;

TEST_F(SatchelStoreLoadingDeathTest, StopsTheProcessWithoutAFolderForUserData)
{
    machine.fileLocations.folder.clear();
    EXPECT_EXIT(SatchelStore store(machine.platform), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
