#include "fakes/UnprivilegedScope.h"
#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class LauncherStoreLoadingTest : public LauncherStoreFixture
{
protected:
    void expectEmptySlotsFrom(std::string_view bytes)
    {
        writeFile(bytes);
        EXPECT_EQ(restart().slots().get(), LauncherSlots()) << bytes.substr(0, 100);
        EXPECT_EQ(fileText(), bytes) << "nothing is written before something changes";
    }
};

TEST_F(LauncherStoreLoadingTest, MakesTheFoldersAndFiveEmptySlotsAtTheFirstLaunchButNoFile)
{
    EXPECT_EQ(store().slots().get(), LauncherSlots());
    EXPECT_TRUE(store().configuredItems().empty());
    EXPECT_TRUE(fs::is_directory(favicons));
    EXPECT_TRUE(fs::is_empty(favicons));
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(LauncherStoreLoadingTest, MakesTheFolderForItsOwnerOnlyWithTheFoldersOnTheWay)
{
    machine.fileLocations.folder += QStringLiteral("/some/where");
    store();
    const auto made = fs::path(machine.fileLocations.folder.toStdString()) / "Quillsatchel";
    ASSERT_TRUE(fs::is_directory(made / "Favicons"));
    EXPECT_EQ(TestFiles::mode(made), 0700U);
}

TEST_F(LauncherStoreLoadingTest, LeavesFoldersAndIconsThatAreThereAsTheyAre)
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

TEST_F(LauncherStoreLoadingTest, WritesFiveSlotsWhereItReadSeven)
{
    writeFile(ExampleLaunchers::with("null,\n  null\n]", "null, null, null, null]"));
    store().clear(4);
    EXPECT_EQ(fileText(), ExampleLaunchers::json);
}

TEST_F(LauncherStoreLoadingTest, WritesNothingAndFetchesNothingAtTheStart)
{
    const auto text = "  " + std::string(ExampleLaunchers::json) + "\n";
    writeFile(text);
    store();
    machine.mainQueue.advance(std::chrono::hours(1));
    EXPECT_EQ(fileText(), text);
    EXPECT_TRUE(machine.httpClient.requests.empty()) << "the website has no icon yet";
    EXPECT_TRUE(machine.workspace.iconsAskedFor.empty());
}

TEST_F(LauncherStoreLoadingTest, LoadsFiveEmptySlotsFromAnUnreadableText)
{
    expectEmptySlotsFrom("");
    expectEmptySlotsFrom("no json");
    expectEmptySlotsFrom("null");
    expectEmptySlotsFrom(R"({"slots" : []})");
    expectEmptySlotsFrom("\xFF\xFE[]");
    expectEmptySlotsFrom(ExampleLaunchers::json.substr(0, 300));
    expectEmptySlotsFrom(ExampleLaunchers::with("\"website\"", "\"folder\""));
    expectEmptySlotsFrom(ExampleLaunchers::with("0F7A2B94", "0F7A2B9X"));
    expectEmptySlotsFrom(ExampleLaunchers::with("\"name\"", "\"title\""));
    expectEmptySlotsFrom(std::string(ExampleLaunchers::json) + "]");
    expectEmptySlotsFrom(std::string(100'000, '['));
}

TEST_F(LauncherStoreLoadingTest, LoadsFiveEmptySlotsWhereTheFileMayNotBeRead)
{
    writeFile(ExampleLaunchers::json);
    TestFiles::setMode(file, 0);
    const UnprivilegedScope scope(machine.directory.path().toStdString());
    EXPECT_EQ(store().slots().get(), LauncherSlots());
}

TEST_F(LauncherStoreLoadingTest, LoadsFiveEmptySlotsWhereNoFileStandsForTheFile)
{
    fs::create_directories(file);
    EXPECT_EQ(restart().slots().get(), LauncherSlots());
    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(restart().slots().get(), LauncherSlots()) << "it does not wait for a pipe";
}

TEST_F(LauncherStoreLoadingTest, ReadsTheFileOnlyOnce)
{
    writeFile(ExampleLaunchers::json);
    store();
    writeFile("[]");
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
    store().clear(1);
    EXPECT_EQ(fileText(), ExampleLaunchers::json) << "what others wrote meanwhile is overwritten";
}

TEST_F(LauncherStoreLoadingTest, WorksInMemoryWhereAFileStandsForTheFolder)
{
    TestFiles::write(folder, "in the way");
    EXPECT_TRUE(store().setWebsite("example.com", 0));
    EXPECT_EQ(item(0)->name, "example.com");
    store().clear(0);
    EXPECT_FALSE(item(0));
    EXPECT_EQ(TestFiles::read(folder), "in the way");
}

TEST_F(LauncherStoreLoadingTest, WorksWithoutIconsWhereAFileStandsForTheirFolder)
{
    TestFiles::write(favicons, "in the way");
    EXPECT_TRUE(store().setWebsite("example.com", 0));
    EXPECT_TRUE(isSaved());
    EXPECT_TRUE(store().icon(*item(0), 16).image.isNull());
    EXPECT_EQ(TestFiles::read(favicons), "in the way");
}

using LauncherStoreLoadingDeathTest = LauncherStoreLoadingTest;

TEST_F(LauncherStoreLoadingDeathTest, StopsTheProcessWithoutAPlaceForFiles)
{
    machine.fileLocations.folder.clear();
    EXPECT_EXIT(store(), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
