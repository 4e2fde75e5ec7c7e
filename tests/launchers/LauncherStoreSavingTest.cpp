#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{

namespace fs = std::filesystem;

using LauncherStoreSavingTest = LauncherStoreFixture;

TEST_F(LauncherStoreSavingTest, SavesEveryChangeImmediately)
{
    store().setWebsite("example.com", 2);
    EXPECT_TRUE(isSaved());
    fillWithApplication(4);
    EXPECT_TRUE(isSaved());
    store().clear(2);
    EXPECT_TRUE(isSaved());
    EXPECT_EQ(ExampleLaunchers::decode(fileText()), store().slots().get());
}

TEST_F(LauncherStoreSavingTest, SavesWhenClearingAnEmptySlot)
{
    store().clear(3);
    EXPECT_EQ(fileText(), "[\n  null,\n  null,\n  null,\n  null,\n  null\n]");
}

TEST_F(LauncherStoreSavingTest, SavesNothingWithoutAChange)
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
    for (const int slot : InvalidSlots) {
        store().setWebsite("example.com", slot);
        store().chooseApplication(slot);
        store().clear(slot);
        store().launch(slot);
    }
    machine.mainQueue.advance(std::chrono::hours(1));
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
}

TEST_F(LauncherStoreSavingTest, WritesEqualSlotsToEqualBytes)
{
    writeFile(ExampleLaunchers::with("\"id\"", R"("extra" : 1, "id")"));
    store().clear(1);
    EXPECT_EQ(fileText(), ExampleLaunchers::json) << "unknown members are dropped";
    store().clear(1);
    EXPECT_EQ(fileText(), ExampleLaunchers::json);
}

TEST_F(LauncherStoreSavingTest, LoadsOnTheNextStartWhatItSaved)
{
    machine.workspace.names["/apps/\u00E9 \"b\".desktop"] = { .displayName = "\u00C9 / \"b\"\n",
                                                              .name = {} };
    fillWithApplication(0, "/apps/\u00E9 \"b\".desktop");
    store().setWebsite("b\u00FCcher.example/a b", 3);
    const auto before = store().slots().get();
    EXPECT_EQ(restart().slots().get(), before);
    EXPECT_EQ(item(0)->name, "\u00C9 / \"b\"\n");
}

TEST_F(LauncherStoreSavingTest, DoesNotTouchThePrompts)
{
    TestFiles::write(folder / "prompts.json", "prompts");
    store().setWebsite("example.com", 0);
    store().clear(0);
    EXPECT_EQ(TestFiles::read(folder / "prompts.json"), "prompts");
}

TEST_F(LauncherStoreSavingTest, KeepsAnUnreadableFileUntilARealChange)
{
    writeFile("unreadable");
    EXPECT_FALSE(store().setWebsite("", 0));
    store().clear(5);
    EXPECT_EQ(fileText(), "unreadable");
    EXPECT_FALSE(fs::exists(folder / "launchers.json.unreadable"));
}

} // namespace
