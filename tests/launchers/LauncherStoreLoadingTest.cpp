#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>

namespace
{

namespace fs = std::filesystem;

using LauncherStoreLoadingTest = LauncherStoreFixture;

TEST_F(LauncherStoreLoadingTest, CreatesFoldersButNoFileOnTheFirstLaunch)
{
    EXPECT_EQ(store().slots().get(), LauncherSlots());
    EXPECT_TRUE(store().configuredItems().empty());
    EXPECT_TRUE(fs::is_directory(favicons));
    EXPECT_TRUE(fs::is_empty(favicons));
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(LauncherStoreLoadingTest, KeepsExistingFoldersAndIcons)
{
    TestFiles::write(favicons / "icon.png", "icon");
    TestFiles::setMode(folder, 0750);
    store();
    EXPECT_EQ(TestFiles::mode(folder), 0750U);
    EXPECT_EQ(TestFiles::read(favicons / "icon.png"), "icon");
}

TEST_F(LauncherStoreLoadingTest, ReadsTheSlots)
{
    writeFile(ExampleLaunchers::json);
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
}

TEST_F(LauncherStoreLoadingTest, ReadsEverySlot)
{
    LauncherSlots slots;
    for (auto &slot : slots)
        slot = LauncherItem { .name = "name", .target = "target" };
    writeFile(ExampleLaunchers::encode(slots));
    EXPECT_EQ(store().slots().get(), slots);
}

TEST_F(LauncherStoreLoadingTest, ReadsFewerAndMoreThanFiveSlots)
{
    writeFile("[]");
    EXPECT_EQ(restart().slots().get(), LauncherSlots());
    writeFile("[null, null]");
    EXPECT_EQ(restart().slots().get(), LauncherSlots());
    writeFile(ExampleLaunchers::with("null,\n  null\n]", "null, null, null, null]"));
    EXPECT_EQ(restart().slots().get(), ExampleLaunchers::slots());
}

TEST_F(LauncherStoreLoadingTest, SavesFiveSlotsAfterLoadingSeven)
{
    writeFile(ExampleLaunchers::with("null,\n  null\n]", "null, null, null, null]"));
    store().clear(4);
    EXPECT_EQ(fileText(), ExampleLaunchers::json);
}

TEST_F(LauncherStoreLoadingTest, WritesAndDownloadsNothingOnLoading)
{
    const auto text = "  " + std::string(ExampleLaunchers::json) + "\n";
    writeFile(text);
    store();
    machine.mainQueue.advance(std::chrono::hours(1));
    EXPECT_EQ(fileText(), text);
    EXPECT_TRUE(machine.httpClient.requests.empty()) << "the website has no icon yet";
    EXPECT_TRUE(machine.workspace.requestedIcons.empty());
}

TEST_F(LauncherStoreLoadingTest, WorksWithoutIconsIfAFileTakesThePlaceOfTheirFolder)
{
    TestFiles::write(favicons, "in the way");
    EXPECT_TRUE(store().setWebsite("example.com", 0));
    EXPECT_TRUE(isSaved());
    EXPECT_TRUE(store().icon(*item(0), 16).image.isNull());
    EXPECT_EQ(TestFiles::read(favicons), "in the way");
}

using LauncherStoreLoadingDeathTest = LauncherStoreLoadingTest;

TEST_F(LauncherStoreLoadingDeathTest, StopsTheProcessWithoutAFolderForUserData)
{
    machine.fileLocations.folder.clear();
    EXPECT_EXIT(store(), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
