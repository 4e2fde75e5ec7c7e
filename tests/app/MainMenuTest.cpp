#include "app/MainMenu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Action = MenuItem::Action;
using Texts = std::vector<std::string>;

/// Title and shortcut of each entry.
Texts entriesOf(const std::vector<MenuItem> &items)
{
    Texts entries;
    for (const auto &item : items) {
        const auto key = item.keyEquivalent.toString(QKeySequence::PortableText).toStdString();
        auto entry = item.isSeparator() ? "-" : item.title.toStdString();
        if (!key.empty())
            entry.append(" ").append(key);
        entries.push_back(entry);
    }
    return entries;
}

TEST(MainMenuTest, HoldsAboutSettingsHideAndQuit)
{
    const auto items = MainMenu::makeApplicationMenu();
    EXPECT_EQ(entriesOf(items), Texts({ "About Quillsatchel", "Settings\u2026 Ctrl+,", "-",
                                        "Hide Quillsatchel Ctrl+H", "Quit Quillsatchel Ctrl+Q" }));
    std::vector<Action> actions;
    for (const auto &item : items)
        actions.push_back(item.action);
    EXPECT_EQ(actions, std::vector({ Action::showAbout, Action::showSettings, Action::none,
                                     Action::hide, Action::quitApp }));
}

TEST(MainMenuTest, HasNoCheckMarksImagesOrSlots)
{
    for (const auto &item : MainMenu::makeApplicationMenu()) {
        EXPECT_FALSE(item.state) << item.title.toStdString();
        EXPECT_FALSE(item.image) << item.title.toStdString();
        EXPECT_FALSE(item.representedSlot) << item.title.toStdString();
    }
}

} // namespace
