#include "fakes/UnprivilegedScope.h"
#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_view_literals;

class LauncherStoreSavingTest : public LauncherStoreFixture
{
protected:
    static constexpr auto Unreadable = "[ null, \0\xFF half a launcher"sv;

    fs::path scratch() const { return machine.directory.path().toStdString(); }

    fs::path kept = folder / "launchers.json.unreadable";
};

TEST_F(LauncherStoreSavingTest, SavesEveryChangeAtOnce)
{
    store().setWebsite("example.com", 2);
    EXPECT_TRUE(isSaved());
    fillWithApplication(4);
    EXPECT_TRUE(isSaved());
    store().clear(2);
    EXPECT_TRUE(isSaved());
    EXPECT_EQ(ExampleLaunchers::decode(fileText()), store().slots().get());
}

TEST_F(LauncherStoreSavingTest, SavesWhenItClearsASlotThatIsEmptyAlready)
{
    store().clear(3);
    EXPECT_EQ(fileText(), "[\n  null,\n  null,\n  null,\n  null,\n  null\n]");
}

TEST_F(LauncherStoreSavingTest, SavesNothingWhereNothingChanges)
{
    writeFile(ExampleLaunchers::json);
    store();
    fs::remove(file);
    store().launch(0);
    store().launch(1);
    store().configuredItems();
    store().icon(*item(0), 16);
    store().icon(*item(2), 16);
    EXPECT_FALSE(store().setWebsite("ftp://example.com", 0));
    store().chooseApplication(0);
    choose(std::nullopt);
    for (const int slot : NoSlots) {
        store().setWebsite("example.com", slot);
        store().chooseApplication(slot);
        store().clear(slot);
        store().launch(slot);
    }
    machine.mainQueue.advance(std::chrono::hours(1));
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
}

TEST_F(LauncherStoreSavingTest, WritesTheSameSlotsToTheSameBytes)
{
    writeFile(ExampleLaunchers::with("\"id\"", R"("extra" : 1, "id")"));
    store().clear(1);
    EXPECT_EQ(fileText(), ExampleLaunchers::json) << "unknown members are lost";
    store().clear(1);
    EXPECT_EQ(fileText(), ExampleLaunchers::json);
}

TEST_F(LauncherStoreSavingTest, GivesTheNextStartWhatThisOneSaved)
{
    machine.workspace.names["/apps/\u00E9 \"b\".desktop"] = { .displayName = "\u00C9 / \"b\"\n",
                                                              .name = {} };
    fillWithApplication(0, "/apps/\u00E9 \"b\".desktop");
    store().setWebsite("b\u00FCcher.example/a b", 3);
    const auto before = store().slots().get();
    EXPECT_EQ(restart().slots().get(), before);
    EXPECT_EQ(item(0)->name, "\u00C9 / \"b\"\n");
}

TEST_F(LauncherStoreSavingTest, MakesTheFileForItsOwnerOnly)
{
    const auto former = umask(0);
    store().clear(0);
    umask(former);
    EXPECT_EQ(TestFiles::mode(file), 0600U);
    EXPECT_EQ(TestFiles::mode(folder), 0700U);
}

TEST_F(LauncherStoreSavingTest, ReplacesTheFileInOneStep)
{
    writeFile(ExampleLaunchers::json);
    const auto former = folder / "former";
    fs::create_hard_link(file, former);
    store().clear(0);
    EXPECT_TRUE(isSaved());
    EXPECT_EQ(TestFiles::read(former), ExampleLaunchers::json) << "the old file was written into";
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 3) << "something was left over";
}

TEST_F(LauncherStoreSavingTest, LeavesThePromptsAlone)
{
    TestFiles::write(folder / "prompts.json", "prompts");
    store().setWebsite("example.com", 0);
    store().clear(0);
    EXPECT_EQ(TestFiles::read(folder / "prompts.json"), "prompts");
}

TEST_F(LauncherStoreSavingTest, KeepsChangesInMemoryWhereTheFileMayNotBeWritten)
{
    writeFile(ExampleLaunchers::json);
    store();
    const UnprivilegedScope scope(scratch());
    TestFiles::setMode(folder, 0500);
    EXPECT_TRUE(store().setWebsite("example.com", 0));
    EXPECT_EQ(item(0)->name, "example.com");
    EXPECT_EQ(fileText(), ExampleLaunchers::json);

    TestFiles::setMode(folder, 0700);
    store().clear(1);
    EXPECT_TRUE(isSaved());
}

TEST_F(LauncherStoreSavingTest, KeepsAnUnreadableFileByteForByteWhenTheFirstSaveOverwritesIt)
{
    writeFile(Unreadable);
    store();
    EXPECT_FALSE(fs::exists(kept)) << "nothing is written before something changes";
    store().setWebsite("example.com", 0);
    EXPECT_EQ(TestFiles::read(kept), Unreadable);
    EXPECT_TRUE(isSaved());
}

TEST_F(LauncherStoreSavingTest, KeepsAnUnreadableFileOnlyOnce)
{
    writeFile(Unreadable);
    store().clear(0);
    store().clear(0);
    EXPECT_EQ(TestFiles::read(kept), Unreadable);
    fs::remove(kept);
    store().clear(0);
    EXPECT_FALSE(fs::exists(kept));
    restart().clear(0);
    EXPECT_FALSE(fs::exists(kept)) << "what was saved since is readable";
}

TEST_F(LauncherStoreSavingTest, KeepsAnUnreadableFileThroughChangesThatAreNone)
{
    writeFile(Unreadable);
    EXPECT_FALSE(store().setWebsite("", 0));
    store().clear(5);
    EXPECT_EQ(fileText(), Unreadable);
    EXPECT_FALSE(fs::exists(kept));
}

TEST_F(LauncherStoreSavingTest, KeepsNoValidOrMissingFileAside)
{
    for (const auto text : { ExampleLaunchers::json, "[]"sv }) {
        writeFile(text);
        restart().clear(0);
        EXPECT_FALSE(fs::exists(kept)) << text;
    }
    fs::remove(file);
    restart().clear(0);
    EXPECT_FALSE(fs::exists(kept)) << "no file";
}

TEST_F(LauncherStoreSavingTest, DoesNotOverwriteAnUnreadableFileUntilItCanBeKept)
{
    writeFile(Unreadable);
    store();
    const UnprivilegedScope scope(scratch());
    TestFiles::setMode(folder, 0500);
    EXPECT_TRUE(store().setWebsite("example.com", 0));
    EXPECT_EQ(fileText(), Unreadable);
    EXPECT_TRUE(item(0));

    TestFiles::setMode(folder, 0700);
    store().clear(1);
    EXPECT_EQ(TestFiles::read(kept), Unreadable);
    EXPECT_TRUE(isSaved());
}

} // namespace
