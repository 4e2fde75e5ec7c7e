#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Texts = std::vector<std::string>;

/// Clearing, opening and listing slots, and notifying observers.
class LauncherStoreSlotsTest : public LauncherStoreFixture
{
protected:
    LauncherStoreSlotsTest() { writeFile(ExampleLaunchers::json); }

    /// Restarts with a website in slot 0 whose target is `target`, which may be invalid.
    void startWithTarget(const std::string &target)
    {
        auto slots = ExampleLaunchers::slots();
        slots[0] = ExampleLaunchers::website();
        slots[0]->target = target;
        writeFile(ExampleLaunchers::encode(slots));
        restart();
        ASSERT_EQ(store().slots().get(), slots);
    }

    /// How often `change` is announced. Checks that it is delivered equally often.
    template <typename Change>
    int announcementsOf(Change &&change)
    {
        const Publications publications(store());
        std::forward<Change>(change)();
        EXPECT_EQ(publications.delivered, publications.announced);
        return publications.announced;
    }
};

TEST_F(LauncherStoreSlotsTest, ClearsOnlyOneSlot)
{
    store().clear(0);
    EXPECT_EQ(store().slots().get(),
              (LauncherSlots { std::nullopt, std::nullopt, ExampleLaunchers::website() }));
    store().clear(2);
    EXPECT_EQ(store().slots().get(), LauncherSlots());
}

TEST_F(LauncherStoreSlotsTest, PublishesAndSavesWhenClearingAnEmptySlot)
{
    store();
    std::filesystem::remove(file);
    EXPECT_EQ(announcementsOf([this] { store().clear(3); }), 1);
    EXPECT_EQ(fileText(), ExampleLaunchers::json);
}

TEST_F(LauncherStoreSlotsTest, ClearsNothingInAnInvalidSlot)
{
    store();
    std::filesystem::remove(file);
    for (const int slot : InvalidSlots)
        EXPECT_EQ(announcementsOf([&] { store().clear(slot); }), 0) << slot;
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(LauncherStoreSlotsTest, LaunchesAnApplicationByItsPath)
{
    store().launch(0);
    EXPECT_EQ(machine.workspace.opened, Texts { "/Applications/Safari.app" });
}

TEST_F(LauncherStoreSlotsTest, LaunchesAWebsiteByItsAddress)
{
    store().launch(2);
    EXPECT_EQ(machine.workspace.opened, Texts { "https://www.example.com" });
    store().setWebsite("HTTP://Example.com/a b", 4);
    store().launch(4);
    EXPECT_EQ(machine.workspace.opened.back(), "HTTP://Example.com/a%20b");
}

TEST_F(LauncherStoreSlotsTest, LaunchesOnEachCall)
{
    store().launch(2);
    store().launch(2);
    EXPECT_EQ(machine.workspace.opened.size(), 2U);
}

TEST_F(LauncherStoreSlotsTest, LaunchesNothingFromEmptyOrInvalidSlots)
{
    for (const int slot : { 1, 3, 4 })
        store().launch(slot);
    for (const int slot : InvalidSlots)
        store().launch(slot);
    EXPECT_TRUE(machine.workspace.opened.empty());
}

TEST_F(LauncherStoreSlotsTest, DoesNotLaunchAWebsiteWithAnInvalidTarget)
{
    for (const auto *const target : { "", "https://exa mple.com", "://", "https://[::1" }) {
        startWithTarget(target);
        store().launch(0);
        EXPECT_TRUE(machine.workspace.opened.empty()) << target;
    }
}

TEST_F(LauncherStoreSlotsTest, LaunchesAWebsiteWithAnyValidTarget)
{
    startWithTarget("ftp://example.com/a b");
    store().launch(0);
    EXPECT_EQ(machine.workspace.opened, Texts { "ftp://example.com/a%20b" });
}

TEST_F(LauncherStoreSlotsTest, ChangesNothingWhenLaunching)
{
    store();
    std::filesystem::remove(file);
    EXPECT_EQ(announcementsOf([this] { store().launch(0); }), 0);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(LauncherStoreSlotsTest, ListsFilledSlotsInOrder)
{
    using Items = std::vector<LauncherStore::ConfiguredItem>;
    EXPECT_EQ(store().configuredItems(), (Items { { 0, ExampleLaunchers::application() },
                                                  { 2, ExampleLaunchers::website() } }));

    store().clear(0);
    store().clear(2);
    EXPECT_EQ(store().configuredItems(), Items());
    store().setWebsite("b.example", 4);
    store().setWebsite("a.example", 1);
    EXPECT_EQ(store().configuredItems(), (Items { { 1, *item(1) }, { 4, *item(4) } }));
}

TEST_F(LauncherStoreSlotsTest, PublishesEachChangeOnce)
{
    EXPECT_EQ(announcementsOf([this] { store().setWebsite("example.com", 0); }), 1);
    EXPECT_EQ(announcementsOf([this] { store().setWebsite("example.com", 0); }), 1);
    EXPECT_EQ(announcementsOf([this] { store().chooseApplication(0); }), 0);
    EXPECT_EQ(announcementsOf([this] { choose("/apps/editor.desktop"); }), 1);
    EXPECT_EQ(announcementsOf([this] { store().clear(0); }), 1);
    EXPECT_EQ(announcementsOf([this] { store().clear(0); }), 1);
    EXPECT_EQ(announcementsOf([this] { store().configuredItems(); }), 0);
}

TEST_F(LauncherStoreSlotsTest, AnnouncesThenStoresThenDeliversThenSaves)
{
    Texts events;
    const auto note = [&](const std::string &event) {
        const auto &slot = item(1);
        const bool isWritten = fileText() != ExampleLaunchers::json;
        events.push_back(event + " " + (slot ? slot->name : "empty") + (isWritten ? " saved" : ""));
    };
    store();
    const Cancellable announcing(QObject::connect(&store(), &ObservableObject::objectWillChange,
                                                  [&] { note("announced"); }));
    const auto receiving = store().slots().sink([&](const LauncherSlots &) { note("delivered"); });
    events.clear();

    store().setWebsite("example.com", 1);
    EXPECT_EQ(events, (Texts { "announced empty", "delivered example.com" }));
    EXPECT_TRUE(isSaved());

    writeFile(ExampleLaunchers::json);
    events.clear();
    store().clear(1);
    EXPECT_EQ(events, (Texts { "announced example.com", "delivered empty" }));
    EXPECT_TRUE(isSaved());

    events.clear();
    fillWithApplication(1);
    EXPECT_EQ(events, (Texts { "announced empty", "delivered editor" }));
    EXPECT_TRUE(isSaved());
}

TEST_F(LauncherStoreSlotsTest, ListsTheNewSlotsInItsSinks)
{
    std::size_t count = 0;
    const auto receiving = store().slots().sink(
        [&](const LauncherSlots &) { count = store().configuredItems().size(); });
    EXPECT_EQ(count, 2U);
    store().setWebsite("example.com", 4);
    EXPECT_EQ(count, 3U);
}

TEST_F(LauncherStoreSlotsTest, LetsSinksChangeTheSlots)
{
    const auto receiving = store().slots().sink([this](const LauncherSlots &slots) {
        if (slots[1])
            store().clear(1);
    });
    EXPECT_TRUE(store().setWebsite("example.com", 1));
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
    EXPECT_TRUE(isSaved());
}

} // namespace
