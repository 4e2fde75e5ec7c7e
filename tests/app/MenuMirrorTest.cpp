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
    void fill(const std::vector<MenuItem> &items,
              MenuMirror::Reader reader = MenuMirror::Reader::Qt)
    {
        MenuMirror::fill(
            menu, items, [this](const MenuItem &item) { chosen.push_back(item); }, reader);
    }

    QAction &entry(qsizetype index) const { return *menu.actions().at(index); }

    std::string labelOf(const std::string &title, MenuMirror::Reader reader)
    {
        fill({ { .action = Action::ShowPanel, .title = QString::fromStdString(title) } }, reader);
        return entry(0).text().toStdString();
    }

    QMenu menu;
    std::vector<MenuItem> chosen;
};

TEST_F(MenuMirrorTest, ShowsTitlesKeysAndMarks)
{
    fill({ { .action = Action::ToggleFloating, .title = QStringLiteral("Mark"), .state = true },
           MenuItem::separator(),
           { .action = Action::Quit,
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

TEST_F(MenuMirrorTest, HandsOnWhatIsChosen)
{
    fill({ { .action = Action::LaunchConfiguredItem,
             .title = QStringLiteral("One"),
             .representedSlot = 1 },
           { .action = Action::LaunchConfiguredItem,
             .title = QStringLiteral("Four"),
             .representedSlot = 4 } });
    entry(1).trigger();
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].action, Action::LaunchConfiguredItem);
    EXPECT_EQ(chosen[0].representedSlot, 4);
}

TEST_F(MenuMirrorTest, ShowsNamesAsTheyAre)
{
    using MenuMirror::Reader;
    EXPECT_EQ(labelOf("Fish & Chips", Reader::Qt), "Fish && Chips");
    EXPECT_EQ(labelOf("under_score", Reader::Qt), "under_score");
    EXPECT_EQ(labelOf("&&", Reader::Qt), "&&&&");
    EXPECT_EQ(labelOf("under_score", Reader::Bus), "under__score");
    // Of the first ampersand Qt makes an underscore, which marks the letter behind it.
    EXPECT_EQ(labelOf("a_b & c & d", Reader::Bus), "&a__b & c & d");
}

TEST_F(MenuMirrorTest, KeepsNothingOfWhatItHeldBefore)
{
    fill({ { .action = Action::ShowPanel, .title = QStringLiteral("Old") },
           { .action = Action::Quit, .title = QStringLiteral("Older") } });
    fill({ { .action = Action::ShowAbout, .title = QStringLiteral("New") } });
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_EQ(entry(0).text().toStdString(), "New");
    EXPECT_EQ(menu.findChildren<QAction *>(Qt::FindDirectChildrenOnly).size(), 2); // and its own
}

TEST_F(MenuMirrorTest, ShowsPicturesAndSymbols)
{
    const auto picture = PictureBytes::filled(18, 18, Qt::green);
    fill({ { .action = Action::LaunchConfiguredItem,
             .title = QStringLiteral("Picture"),
             .image = LauncherIcon { picture, {}, {} } },
           { .action = Action::ShowSettings,
             .title = QStringLiteral("Symbol"),
             .image = LauncherIcon { {}, "gearshape", "Settings" } },
           { .action = Action::Quit, .title = QStringLiteral("Plain") } });
    EXPECT_EQ(entry(0).icon().pixmap(18, 18).toImage().pixelColor(9, 9), QColor(Qt::green));
    EXPECT_TRUE(hasInk(entry(1).icon().pixmap(16, 16).toImage()));
    EXPECT_TRUE(entry(2).icon().isNull());
}

TEST_F(MenuMirrorTest, FindsTheEntryForAnAction)
{
    fill({ { .action = Action::ShowPanel, .title = QStringLiteral("Show") },
           MenuItem::separator(),
           { .action = Action::Quit, .title = QStringLiteral("Quit") } });
    EXPECT_EQ(MenuMirror::entryFor(menu, Action::Quit), &entry(2));
    EXPECT_EQ(MenuMirror::entryFor(menu, Action::Hide), nullptr);
    EXPECT_EQ(MenuMirror::actionOf(entry(0)), Action::ShowPanel);
    EXPECT_EQ(MenuMirror::actionOf(entry(1)), Action::None);
}

} // namespace
