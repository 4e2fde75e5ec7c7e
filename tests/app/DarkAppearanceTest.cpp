#include "app/DarkAppearance.h"

#include "views/Picture.h"

#include <QApplication>
#include <QMenu>
#include <QStyle>
#include <QToolTip>
#include <gtest/gtest.h>

namespace
{

/// A desktop with white windows and black text.
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

TEST_F(DarkAppearanceTest, IsDarkOnALightDesktop)
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

TEST_F(DarkAppearanceTest, AppliesToMenus)
{
    QMenu menu;
    auto *const entry = menu.addAction(QStringLiteral("Entry"));
    menu.adjustSize();
    const Picture picture(menu, Qt::black);
    const QRectF place(menu.actionGeometry(entry));
    EXPECT_LT(menu.palette().color(QPalette::Window).lightness(), 60);
    EXPECT_GT(picture.strongestInkIn(place, Qt::black).lightness(), 150);
}

TEST_F(DarkAppearanceTest, DrawsDisabledEntriesWithoutShadow)
{
    QMenu menu;
    auto *const entry = menu.addAction(QStringLiteral("Entry"));
    menu.adjustSize();
    const QRectF place(menu.actionGeometry(entry));
    const QColor background = menu.palette().color(QPalette::Window);
    const auto bottomOfInk = [&menu, &place, &background] {
        return Picture(menu, background).inkIn(place, background).bottom();
    };
    const qreal before = bottomOfInk();
    entry->setEnabled(false);
    EXPECT_EQ(bottomOfInk(), before);
}

TEST_F(DarkAppearanceTest, UsesTheFusionStyle)
{
    EXPECT_EQ(QApplication::style()->name().toStdString(), "fusion");
}

} // namespace
