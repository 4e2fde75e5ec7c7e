#include "app/StatusMenu.h"

#include "fakes/PictureBytes.h"
#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace
{

using Action = MenuItem::Action;
using Texts = std::vector<std::string>;

class StatusMenuTest : public LauncherStoreFixture
{
protected:
    std::vector<MenuItem> make(bool isAlwaysOnTop = true)
    {
        return StatusMenu::make(isAlwaysOnTop, store(), 2);
    }

    static Texts titlesOf(const std::vector<MenuItem> &items)
    {
        Texts titles;
        for (const auto &item : items)
            titles.push_back(item.isSeparator() ? "-" : item.title.toStdString());
        return titles;
    }

    std::string titleFor(const std::string &name)
    {
        auto item = ExampleLaunchers::website();
        item.name = name;
        writeFile(ExampleLaunchers::encode({ item }));
        restart();
        return make()[4].title.toStdString();
    }

    void fillSlots(std::initializer_list<int> slots)
    {
        for (const int slot : slots)
            ASSERT_TRUE(store().setWebsite("site" + std::to_string(slot) + ".example", slot));
    }
};

TEST_F(StatusMenuTest, HasFiveEntriesWithoutLaunchers)
{
    const auto items = make();
    EXPECT_EQ(titlesOf(items), Texts({ "Show Quillsatchel", "Always on Top", "Settings\u2026", "-",
                                       "Quit Quillsatchel" }));
    EXPECT_EQ(items[0].action, Action::showPanel);
    EXPECT_EQ(items[1].action, Action::toggleFloating);
    EXPECT_EQ(items[2].action, Action::showSettings);
    EXPECT_EQ(items[4].action, Action::quitApp);
}

TEST_F(StatusMenuTest, HasShortcutsForSettingsAndQuitOnly)
{
    fillSlots({ 0 });
    Texts keys;
    for (const auto &item : make())
        keys.push_back(item.keyEquivalent.toString(QKeySequence::PortableText).toStdString());
    EXPECT_EQ(keys, Texts({ "", "", "Ctrl+,", "", "", "", "Ctrl+Q" }));
}

TEST_F(StatusMenuTest, ListsTheLaunchersBetweenTwoSeparators)
{
    fillSlots({ 4, 0, 2 });
    const auto items = make();
    EXPECT_EQ(titlesOf(items),
              Texts({ "Show Quillsatchel", "Always on Top", "Settings\u2026", "-", "site0.example",
                      "site2.example", "site4.example", "-", "Quit Quillsatchel" }));
    for (const std::size_t index : { 0U, 1U, 2U }) {
        const auto &item = items[4 + index];
        EXPECT_EQ(item.action, Action::launchConfiguredItem);
        EXPECT_EQ(item.representedSlot, static_cast<int>(2 * index));
    }
    EXPECT_FALSE(items[0].representedSlot);
}

TEST_F(StatusMenuTest, ListsTheLaunchersSeparately)
{
    EXPECT_TRUE(StatusMenu::makeLauncherItems(store(), 2).empty());
    fillSlots({ 4, 0 });
    const auto items = StatusMenu::makeLauncherItems(store(), 2);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].representedSlot, 0);
    EXPECT_EQ(items[1].title.toStdString(), "site4.example");
}

TEST_F(StatusMenuTest, ShortensNamesToOneLine)
{
    EXPECT_EQ(titleFor("a\nb\tc\x01"
                       "d \u202E e"),
              "a b c d   e");
    EXPECT_EQ(titleFor(std::string(1024 * 1024, 'a')), std::string(79, 'a') + "…");
    EXPECT_EQ(titleFor(""), "");
}

TEST_F(StatusMenuTest, ChecksAlwaysOnTopAsThePreferenceSays)
{
    EXPECT_EQ(make(true)[1].state, true);
    EXPECT_EQ(make(false)[1].state, false);
    EXPECT_FALSE(make()[0].state);
    EXPECT_FALSE(make()[2].state);
}

TEST_F(StatusMenuTest, ShowsAGearBesideTheSettings)
{
    const auto image = make()[2].image;
    ASSERT_TRUE(image);
    EXPECT_EQ(image->symbol, "gearshape");
    EXPECT_EQ(image->description, "Settings");
    EXPECT_FALSE(make()[0].image);
    EXPECT_FALSE(make()[1].image);
}

TEST_F(StatusMenuTest, ShowsTheIconsOfTheLaunchers)
{
    machine.workspace.icon = PictureBytes::filled(64, 64, Qt::green);
    fillWithApplication(3);
    const auto image = make()[4].image;
    ASSERT_TRUE(image);
    EXPECT_EQ(image->image.size(), QSize(36, 36)); // 18 points at two pixels each
    EXPECT_EQ(image->image.devicePixelRatio(), 2);
    EXPECT_EQ(image->image.pixelColor(18, 18), QColor(Qt::green));
}

TEST_F(StatusMenuTest, ShowsASymbolForAWebsiteWithoutAnIcon)
{
    fillSlots({ 1 });
    const auto image = make()[4].image;
    ASSERT_TRUE(image);
    EXPECT_TRUE(image->image.isNull());
    EXPECT_EQ(image->symbol, "globe");
}

} // namespace
