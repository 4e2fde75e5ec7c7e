#include "app/DarkAppearance.h"

#include "views/Picture.h"

#include <QApplication>
#include <QMenu>
#include <QStyle>
#include <QToolTip>
#include <gtest/gtest.h>

namespace
{

/// A desktop with the brightest colours there are.
class DarkAppearanceTest : public testing::Test
{
protected:
    DarkAppearanceTest()
    {
        QPalette bright(Qt::white, Qt::white);
        bright.setColor(QPalette::Text, Qt::black);
        bright.setColor(QPalette::WindowText, Qt::black);
        QApplication::setPalette(bright);
        DarkAppearance::apply();
    }
};

TEST_F(DarkAppearanceTest, IsDarkWhateverTheDesktopIs)
{
    const QPalette palette = QApplication::palette();
    EXPECT_LT(palette.color(QPalette::Window).lightness(), 60);
    EXPECT_LT(palette.color(QPalette::Button).lightness(), 60);
    for (const auto role : { QPalette::Text, QPalette::WindowText, QPalette::ButtonText }) {
        EXPECT_GT(palette.color(role).lightness(), 200);
        EXPECT_LT(palette.color(QPalette::Disabled, role).alphaF(),
                  palette.color(QPalette::Active, role).alphaF());
    }
    EXPECT_LT(QToolTip::palette().color(QPalette::ToolTipBase).lightness(), 60);
    EXPECT_GT(QToolTip::palette().color(QPalette::ToolTipText).lightness(), 200);
}

TEST_F(DarkAppearanceTest, ReachesMenus)
{
    QMenu menu;
    auto *const entry = menu.addAction(QStringLiteral("Entry"));
    menu.adjustSize();
    const Picture picture(menu, Qt::black);
    const QRectF place(menu.actionGeometry(entry));
    EXPECT_LT(menu.palette().color(QPalette::Window).lightness(), 60);
    EXPECT_GT(picture.strongestInkIn(place, Qt::black).lightness(), 150);
}

TEST_F(DarkAppearanceTest, LeavesEntriesThatCannotBeChosenWithoutShadow)
{
    QMenu menu;
    auto *const entry = menu.addAction(QStringLiteral("Entry"));
    menu.adjustSize();
    const QRectF place(menu.actionGeometry(entry));
    const QColor ground = menu.palette().color(QPalette::Window);
    const auto endOfInk = [&menu, &place, &ground] {
        return Picture(menu, ground).inkIn(place, ground).bottom();
    };
    const qreal before = endOfInk();
    entry->setEnabled(false);
    EXPECT_EQ(endOfInk(), before);
}

TEST_F(DarkAppearanceTest, HasOneStyleOnEveryDesktop)
{
    EXPECT_EQ(QApplication::style()->name().toStdString(), "fusion");
}

} // namespace
