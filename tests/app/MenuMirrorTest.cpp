#include "app/MenuMirror.h"

#include "fakes/PictureBytes.h"

#include <QAction>
#include <QMenu>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{

using Action = MenuItem::Action;

bool hasInk(const QImage &image)
{
    const auto opacities = image.convertToFormat(QImage::Format_Alpha8);
    for (int y = 0; y < opacities.height(); ++y) {
        const auto *const row = opacities.constScanLine(y);
        if (std::any_of(row, row + opacities.width(), [](uchar opacity) { return opacity > 0; }))
            return true;
    }
    return false;
}

class MenuMirrorTest : public testing::Test
{
protected:
    void fill(const std::vector<MenuItem> &items)
    {
        MenuMirror::fill(menu, items, [this](const MenuItem &item) { chosen.push_back(item); });
    }

    QAction &entry(qsizetype index) const { return *menu.actions().at(index); }

    std::string labelOf(const std::string &title, MenuMirror::Reader reader)
    {
        const MenuItem item { .action = Action::showPanel, .title = QString::fromStdString(title) };
        return MenuMirror::addAction(menu, item, {}, reader)->text().toStdString();
    }

    QMenu menu;
    std::vector<MenuItem> chosen;
};

TEST_F(MenuMirrorTest, ShowsTitlesShortcutsAndCheckMarks)
{
    fill({ { .action = Action::toggleFloating, .title = QStringLiteral("Mark"), .state = true },
           MenuItem::separator(),
           { .action = Action::quitApp,
             .title = QStringLiteral("Quit"),
             .keyEquivalent = Qt::CTRL | Qt::Key_Q } });
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_EQ(entry(0).text().toStdString(), "Mark");
    EXPECT_TRUE(entry(0).isCheckable());
    EXPECT_TRUE(entry(0).isChecked());
    EXPECT_TRUE(entry(0).shortcut().isEmpty());
    EXPECT_TRUE(entry(1).isSeparator());
    EXPECT_FALSE(entry(2).isCheckable());
    EXPECT_EQ(entry(2).shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(MenuMirrorTest, PassesOnTheChosenItem)
{
    fill({ { .action = Action::launchConfiguredItem,
             .title = QStringLiteral("One"),
             .representedSlot = 1 },
           { .action = Action::launchConfiguredItem,
             .title = QStringLiteral("Four"),
             .representedSlot = 4 } });
    entry(1).trigger();
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].action, Action::launchConfiguredItem);
    EXPECT_EQ(chosen[0].representedSlot, 4);
}

TEST_F(MenuMirrorTest, EscapesMnemonicsInTitles)
{
    using MenuMirror::Reader;
    EXPECT_EQ(labelOf("Fish & Chips", Reader::qt), "Fish && Chips");
    EXPECT_EQ(labelOf("under_score", Reader::qt), "under_score");
    EXPECT_EQ(labelOf("&&", Reader::qt), "&&&&");
    EXPECT_EQ(labelOf("under_score", Reader::bus), "under__score");
    // Qt turns the first ampersand into an underscore, which marks the next letter.
    EXPECT_EQ(labelOf("a_b & c & d", Reader::bus), "&a__b & c & d");
}

TEST_F(MenuMirrorTest, ReplacesEarlierEntries)
{
    fill({ { .action = Action::showPanel, .title = QStringLiteral("Old") },
           { .action = Action::quitApp, .title = QStringLiteral("Older") } });
    fill({ { .action = Action::showAbout, .title = QStringLiteral("New") } });
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_EQ(entry(0).text().toStdString(), "New");
    EXPECT_EQ(menu.findChildren<QAction *>(Qt::FindDirectChildrenOnly).size(), 2)
        << "one entry and the menu's own action";
}

TEST_F(MenuMirrorTest, ShowsImagesAndSymbolsWhenItOpens)
{
    const auto picture = PictureBytes::filled(18, 18, Qt::green);
    fill({ { .action = Action::launchConfiguredItem,
             .title = QStringLiteral("Picture"),
             .image = LauncherIcon { picture, {}, {} } },
           { .action = Action::showSettings,
             .title = QStringLiteral("Symbol"),
             .image = LauncherIcon { {}, "gearshape", "Settings" } },
           { .action = Action::quitApp, .title = QStringLiteral("Plain") } });
    EXPECT_TRUE(entry(0).icon().isNull());
    EXPECT_TRUE(entry(1).icon().isNull());

    menu.popup({});
    EXPECT_EQ(entry(0).icon().pixmap(18, 18).toImage().pixelColor(9, 9), QColor(Qt::green));
    EXPECT_TRUE(hasInk(entry(1).icon().pixmap(16, 16).toImage()));
    EXPECT_TRUE(entry(2).icon().isNull());
}

} // namespace
