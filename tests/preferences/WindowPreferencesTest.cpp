#include "preferences/WindowPreferences.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

TEST(WindowPreferencesTest, FloatsAndShowsNoCardByDefault)
{
    const WindowPreferences preferences;
    EXPECT_TRUE(preferences.alwaysOnTop.get());
    EXPECT_FALSE(preferences.showsInfoCard.get());
    EXPECT_FALSE(preferences.showsSettingsCard.get());
}

TEST(WindowPreferencesTest, DoesNotRememberTheLastRun)
{
    {
        WindowPreferences lastRun;
        lastRun.alwaysOnTop.set(false);
        lastRun.showsInfoCard.set(true);
        lastRun.showsSettingsCard.set(true);
    }
    const WindowPreferences preferences;
    EXPECT_TRUE(preferences.alwaysOnTop.get());
    EXPECT_FALSE(preferences.showsInfoCard.get());
    EXPECT_FALSE(preferences.showsSettingsCard.get());
}

TEST(WindowPreferencesTest, CanRequestBothCards)
{
    WindowPreferences preferences;
    preferences.showsInfoCard.set(true);
    preferences.showsSettingsCard.set(true);
    EXPECT_TRUE(preferences.showsInfoCard.get());
    EXPECT_TRUE(preferences.showsSettingsCard.get());
}

TEST(WindowPreferencesTest, AnnouncesEachChangeBeforeDeliveringIt)
{
    WindowPreferences preferences;
    for (auto *flag :
         { &preferences.alwaysOnTop, &preferences.showsInfoCard, &preferences.showsSettingsCard }) {
        const bool before = flag->get();
        std::vector<std::string> events;
        const auto subscription =
            flag->sink([&](bool value) { events.emplace_back(value ? "on" : "off"); });
        events.clear();
        const Cancellable announced(
            QObject::connect(&preferences, &ObservableObject::objectWillChange, [&] {
                EXPECT_EQ(flag->get(), before);
                events.emplace_back("announced");
            }));

        flag->set(!before);

        EXPECT_EQ(events, std::vector<std::string>({ "announced", before ? "off" : "on" }));
    }
}

TEST(WindowPreferencesTest, PublishesAWriteOfTheSameValue)
{
    WindowPreferences preferences;
    std::vector<bool> received;
    const auto subscription =
        preferences.alwaysOnTop.sink([&](bool value) { received.push_back(value); });

    preferences.alwaysOnTop.set(true);

    EXPECT_EQ(received, std::vector<bool>({ true, true }));
}

} // namespace
