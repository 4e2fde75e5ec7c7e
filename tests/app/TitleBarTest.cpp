#include "app/MiniSwitch.h"
#include "app/PanelFixture.h"
#include "app/TitlebarControlsView.h"
#include "app/TrafficLight.h"
#include "app/WindowDragLabel.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

class TitleBarTest : public PanelFixture
{
protected:
    TitleBarTest() { start({ tabOf("Prompts") }); }

    TitleBar &titleBar() { return *panel().findChild<TitleBar *>(); }

    QPoint emptyPlace() { return { 110, 14 }; }
};

TEST_F(TitleBarTest, IsTwentyEightPointsHighOverTheContent)
{
    EXPECT_EQ(placeOf(titleBar()), QRect(0, 0, 430, 28));
    EXPECT_GE(placeOf(*chips()[0]).top(), 28);
    EXPECT_LT(placeOf(*chips()[0]).bottom(), 28 + 38);
}

TEST_F(TitleBarTest, HasTheWindowButtonsOnTheLeft)
{
    const QRect close = placeOf(button("Close"));
    const QRect minimize = placeOf(button("Minimize"));
    const QRect zoom = placeOf(button("Zoom"));
    EXPECT_LE(close.left(), 12);
    EXPECT_LT(close.right(), minimize.left());
    EXPECT_LT(minimize.right(), zoom.left());
    EXPECT_LT(zoom.right(), 100);
    for (const auto *const name : { "Close", "Minimize", "Zoom" }) {
        EXPECT_NEAR(QRectF(placeOf(button(name))).center().y(), 14, 0.5) << name;
        EXPECT_EQ(button(name).toolTip().toStdString(), name);
        EXPECT_EQ(Input::role(button(name)), QAccessible::Button);
    }
}

TEST_F(TitleBarTest, HidesThePanelByItsCloseButton)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    press("Close");
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(TitleBarTest, MinimisesThePanel)
{
    press("Minimize");
    EXPECT_TRUE(panel().isMinimized());
}

TEST_F(TitleBarTest, ZoomsThePanelAndBack)
{
    press("Zoom");
    EXPECT_TRUE(panel().isMaximized());
    press("Zoom");
    EXPECT_FALSE(panel().isMaximized());
    EXPECT_EQ(panel().size(), QSize(430, 650));
}

TEST_F(TitleBarTest, ZoomsThePanelByADoubleClick)
{
    QTest::mouseDClick(panel().windowHandle(), Qt::LeftButton, {}, emptyPlace());
    settle();
    EXPECT_TRUE(panel().isMaximized());
}

TEST_F(TitleBarTest, HasIconAndNameInTheMiddle)
{
    auto &icon = button("About Quillsatchel");
    const auto &name = *panel().findChild<WindowDragLabel *>();
    EXPECT_EQ(icon.size(), QSize(21, 21));
    EXPECT_EQ(icon.toolTip().toStdString(), "About Quillsatchel");
    EXPECT_EQ(name.text().toStdString(), "Quillsatchel");
    EXPECT_EQ(name.toolTip().toStdString(), "Drag to move Quillsatchel");
    EXPECT_EQ(name.font().pixelSize(), 11);
    EXPECT_EQ(name.font().weight(), QFont::DemiBold);
    EXPECT_EQ(placeOf(name).left() - placeOf(icon).right() - 1, 5);
    EXPECT_NEAR((placeOf(icon).left() + placeOf(name).right() + 1) / 2.0, 215, 0.5);
    EXPECT_NEAR(QRectF(placeOf(icon)).center().y(), 14, 0.5);
    EXPECT_NEAR(QRectF(placeOf(name)).center().y(), 14, 0.5);
}

TEST_F(TitleBarTest, DrawsTheIconInItsOwnColors)
{
    const Picture picture(button("About Quillsatchel"), Qt::black);
    const QRectF ink = picture.inkIn(picture.rect(), Qt::black);
    EXPECT_GE(std::max(ink.width(), ink.height()), 15);
    EXPECT_LE(std::max(ink.width(), ink.height()), 19.5);
    bool isColorful = false;
    for (qreal y = 0; y < 21; y += 1) {
        for (qreal x = 0; x < 21; x += 1)
            isColorful = isColorful || !isGrey(picture.at(x, y));
    }
    EXPECT_TRUE(isColorful);
}

TEST_F(TitleBarTest, HasTheControlsEightPointsFromTheRightEdge)
{
    const auto &controls = *panel().findChild<TitlebarControlsView *>();
    EXPECT_EQ(placeOf(controls).right(), 430 - 8 - 1);
    EXPECT_EQ(controls.height(), 28);
    EXPECT_EQ(placeOf(controls).top(), 0);
    panel().resize(500, 500);
    settle();
    EXPECT_EQ(placeOf(controls).right(), 500 - 8 - 1);
}

TEST_F(TitleBarTest, KeepsItsPartsApartAtTheMinimumWidth)
{
    panel().resize(390, 420);
    settle();
    const QRect zoom = placeOf(button("Zoom"));
    const QRect icon = placeOf(button("About Quillsatchel"));
    const QRect name = placeOf(*panel().findChild<WindowDragLabel *>());
    const QRect controls = placeOf(*panel().findChild<TitlebarControlsView *>());
    EXPECT_LT(zoom.right(), icon.left());
    EXPECT_LT(name.right(), controls.left());
}

TEST_F(TitleBarTest, IgnoresASingleClick)
{
    QTest::mouseClick(panel().windowHandle(), Qt::LeftButton, {}, emptyPlace());
    settle();
    EXPECT_EQ(panel().size(), QSize(430, 650));
    EXPECT_TRUE(panel().isVisible());
}

} // namespace
