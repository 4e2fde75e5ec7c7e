#include "app/MainMenu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Texts = std::vector<std::string>;

/// The entries as a menu shows them, title and key.
Texts entriesOf(const Menu &menu)
{
    Texts entries;
    for (const auto &item : menu.items) {
        const auto key = item.keyEquivalent.toString(QKeySequence::PortableText).toStdString();
        auto entry = item.isSeparator() ? "-" : item.title.toStdString();
        if (!key.empty())
            entry.append(" ").append(key);
        entries.push_back(entry);
    }
    return entries;
}

std::vector<MenuItem::Action> actionsOf(const Menu &menu)
{
    std::vector<MenuItem::Action> actions;
    for (const auto &item : menu.items)
        actions.push_back(item.action);
    return actions;
}

using Action = MenuItem::Action;

TEST(MainMenuTest, HoldsAboutSettingsHideAndQuit)
{
    const auto menu = MainMenu::makeApplicationMenu();
    EXPECT_EQ(menu.title.toStdString(), "Quillsatchel");
    EXPECT_EQ(entriesOf(menu), Texts({ "About Quillsatchel", "Settings\u2026 Ctrl+,", "-",
                                       "Hide Quillsatchel Ctrl+H", "Quit Quillsatchel Ctrl+Q" }));
    EXPECT_EQ(actionsOf(menu), std::vector({ Action::ShowAbout, Action::ShowSettings, Action::None,
                                             Action::Hide, Action::Quit }));
}

TEST(MainMenuTest, HoldsWhatCanBeDoneWithText)
{
    const auto menu = MainMenu::makeEditMenu();
    EXPECT_EQ(menu.title.toStdString(), "Edit");
    EXPECT_EQ(entriesOf(menu), Texts({ "Undo Ctrl+Z", "Redo Ctrl+Shift+Z", "-", "Cut Ctrl+X",
                                       "Copy Ctrl+C", "Paste Ctrl+V", "Select All Ctrl+A" }));
    EXPECT_EQ(actionsOf(menu), std::vector({ Action::Undo, Action::Redo, Action::None, Action::Cut,
                                             Action::Copy, Action::Paste, Action::SelectAll }));
}

TEST(MainMenuTest, HasNeitherMarksNorPictures)
{
    for (const auto &menu : { MainMenu::makeApplicationMenu(), MainMenu::makeEditMenu() }) {
        for (const auto &item : menu.items) {
            EXPECT_FALSE(item.state) << item.title.toStdString();
            EXPECT_FALSE(item.image) << item.title.toStdString();
            EXPECT_FALSE(item.representedSlot) << item.title.toStdString();
        }
    }
}

} // namespace
