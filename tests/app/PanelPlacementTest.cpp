#include "app/PanelPlacement.h"

#include <QRect>
#include <gtest/gtest.h>

namespace
{

constexpr int TitleBarHeight = 28;
constexpr QSize Size(430, 650);
constexpr QRect Left(0, 0, 1280, 1024);
constexpr QRect Right(1280, 0, 1920, 1080);

QPoint reachable(const QPoint &place, const QList<QRect> &areas, const QSize &size = Size)
{
    return PanelPlacement::reachable({ place, size }, TitleBarHeight, areas);
}

TEST(PanelPlacementTest, LeavesThePanelOnEitherScreen)
{
    for (const QPoint place :
         { QPoint(0, 0), QPoint(850, 374), QPoint(1280, 0), QPoint(2770, 430) })
        EXPECT_EQ(reachable(place, { Left, Right }), place);
}

TEST(PanelPlacementTest, LeavesAPanelWhoseTitleBarCanBeTakenHoldOf)
{
    for (const QPoint place : { QPoint(1200, 900), QPoint(-350, 500), QPoint(100, 1000) })
        EXPECT_EQ(reachable(place, { Left }), place);
}

TEST(PanelPlacementTest, BringsBackAPanelOfWhichTooLittleIsInSight)
{
    EXPECT_EQ(reachable({ 1201, 300 }, { Left }), QPoint(850, 300));
    EXPECT_EQ(reachable({ -351, 300 }, { Left }), QPoint(0, 300));
    EXPECT_EQ(reachable({ 300, 1011 }, { Left }), QPoint(300, 374));
}

TEST(PanelPlacementTest, BringsBackAPanelWhoseTitleBarAloneIsOutOfSight)
{
    EXPECT_EQ(reachable({ 300, -15 }, { Left }), QPoint(300, 0));
    EXPECT_EQ(reachable({ 300, 0 }, { QRect(0, 30, 1280, 994) }), QPoint(300, 30));
}

TEST(PanelPlacementTest, BringsAPanelToTheNearestScreen)
{
    const QRect above(0, -1080, 1280, 1080);
    EXPECT_EQ(reachable({ 3300, 300 }, { Left, Right }), QPoint(2770, 300));
    EXPECT_EQ(reachable({ 1500, -900 }, { Left, above }), QPoint(850, -900));
    EXPECT_EQ(reachable({ -2000, 200 }, { Right, Left }), QPoint(0, 200));
}

TEST(PanelPlacementTest, BringsAPanelToTheFirstOfEquallyNearScreens)
{
    const QRect west(-1999, 0, 500, 1000);
    const QRect east(1500, 0, 500, 1000);
    const QRect middle(-250, 100, 501, 600);
    EXPECT_EQ(PanelPlacement::reachable(middle, TitleBarHeight, { east, west }), QPoint(1500, 100));
    EXPECT_EQ(PanelPlacement::reachable(middle, TitleBarHeight, { west, east }),
              QPoint(-1999, 100));
}

TEST(PanelPlacementTest, KeepsTheTitleBarInSightWhereThePanelDoesNotFit)
{
    EXPECT_EQ(reachable({ 2000, 2000 }, { QRect(10, 20, 400, 500) }), QPoint(10, 20));
}

TEST(PanelPlacementTest, LeavesThePanelWhileThereIsNoScreen)
{
    EXPECT_EQ(reachable({ 5000, 5000 }, {}), QPoint(5000, 5000));
}

} // namespace
