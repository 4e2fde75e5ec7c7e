#include "app/StatusItem.h"

#include "app/TrayMenu.h"
#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace
{

using Action = MenuItem::Action;
using Kind = StatusBar::Kind;

/// The tray shows no real icon here; the desktop tests cover that.
class StatusItemTest : public LauncherStoreFixture
{
protected:
    StatusItemTest()
    {
        auto website = ExampleLaunchers::website();
        website.name = "a_b & c";
        writeFile(ExampleLaunchers::encode({ website }));
        item.emplace(bar, preferences, store(),
                     [this](const MenuItem &each) { performed.push_back(each.action); });
    }

    static std::string launcherLabel() { return TrayMenu::titles().at(4); }

    static const QAction *firstEntry() { return TrayMenu::menu().actions().value(0); }

    FakeStatusBar &bar = machine.statusBar;
    WindowPreferences preferences;
    std::vector<Action> performed;
    std::optional<StatusItem> item;
};

TEST_F(StatusItemTest, LooksForATrayOnceItBegins)
{
    EXPECT_EQ(bar.beginCalls, 0);
    item->begin();
    EXPECT_EQ(bar.beginCalls, 1);
}

TEST_F(StatusItemTest, BuildsNoMenuWithoutATray)
{
    item->begin();
    store().clear(0);
    EXPECT_TRUE(TrayMenu::menu().isEmpty());
    EXPECT_FALSE(item->isShown());
}

TEST_F(StatusItemTest, AppearsAndDisappearsWithTheTrayAndKeepsItsMenu)
{
    item->begin();
    bar.kind.set(Kind::notifier);
    EXPECT_TRUE(item->isShown());
    const auto *const entry = firstEntry();
    bar.kind.set(Kind::none);
    EXPECT_FALSE(item->isShown());
    bar.kind.set(Kind::notifier);
    EXPECT_TRUE(item->isShown());
    EXPECT_EQ(firstEntry(), entry);
}

TEST_F(StatusItemTest, FollowsTheAlwaysOnTopPreference)
{
    preferences.alwaysOnTop.set(false);
    item->begin();
    bar.kind.set(Kind::notifier);
    EXPECT_FALSE(TrayMenu::entry("Always on Top").isChecked());
    const auto *const entry = firstEntry();
    preferences.alwaysOnTop.set(true);
    EXPECT_TRUE(TrayMenu::entry("Always on Top").isChecked());
    EXPECT_EQ(firstEntry(), entry) << "rebuilt the menu";
}

TEST_F(StatusItemTest, FollowsTheLaunchers)
{
    item->begin();
    bar.kind.set(Kind::notifier);
    store().clear(0);
    EXPECT_EQ(TrayMenu::titles().size(), 5U);
    ASSERT_TRUE(store().setWebsite("example.com", 1));
    EXPECT_EQ(launcherLabel(), "example.com");
}

TEST_F(StatusItemTest, EscapesUnderscoresInMenusOverDBus)
{
    item->begin();
    bar.kind.set(Kind::notifier);
    EXPECT_EQ(launcherLabel(), "&a__b & c");
}

TEST_F(StatusItemTest, KeepsUnderscoresInMenusOfQt)
{
    item->begin();
    bar.kind.set(Kind::embedded);
    EXPECT_EQ(launcherLabel(), "a_b && c");
}

TEST_F(StatusItemTest, PerformsTheChosenEntry)
{
    item->begin();
    bar.kind.set(Kind::notifier);
    TrayMenu::entry("Show Quillsatchel").trigger();
    EXPECT_EQ(performed, std::vector({ Action::showPanel }));
}

} // namespace
