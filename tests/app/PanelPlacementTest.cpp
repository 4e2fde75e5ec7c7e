#include "app/PanelPlacement.h"

#include <QRect>
#include <gtest/gtest.h>

namespace
{

constexpr QSize Size(430, 650);
constexpr QSize Minimum(390, 420);
constexpr QRect Left(0, 0, 1280, 1024);
constexpr QRect Right(1280, 0, 1920, 1080);

QRect inView(const QPoint &place, const QList<QRect> &areas, const QSize &size = Size)
{
    return PanelPlacement::inView({ place, size }, Minimum, areas);
}

TEST(PanelPlacementTest, KeepsAnAvailableAreaInPoints)
{
    const QRect screen(0, 0, 1024, 819);
    const QRect rounded(0, 22, 1024, 798); // 27 of 1024 pixels are not available
    EXPECT_EQ(PanelPlacement::availableArea(screen, screen, 1.25), screen);
    EXPECT_EQ(PanelPlacement::availableArea(screen, rounded, 1.25), rounded);
    EXPECT_EQ(PanelPlacement::availableArea(Right, Right.adjusted(0, 30, 0, -50), 2),
              Right.adjusted(0, 30, 0, -50));
}

TEST(PanelPlacementTest, ConvertsAnAvailableAreaWhosePlaceIsInPixels)
{
    EXPECT_EQ(PanelPlacement::availableArea({ 0, 0, 853, 683 }, { 0, 27, 853, 665 }, 1.5),
              QRect(0, 18, 853, 665));
    EXPECT_EQ(PanelPlacement::availableArea({ 1280, 0, 960, 540 }, { 1344, 0, 928, 540 }, 2),
              QRect(1312, 0, 928, 540));
}

TEST(PanelPlacementTest, KeepsAPanelInViewOnEitherScreen)
{
    for (const QPoint place :
         { QPoint(0, 0), QPoint(850, 374), QPoint(1280, 0), QPoint(2770, 430) })
        EXPECT_EQ(inView(place, { Left, Right }), QRect(place, Size));
}

TEST(PanelPlacementTest, KeepsAPanelInViewAcrossTwoScreens)
{
    EXPECT_EQ(inView({ 1100, 300 }, { Left, Right }), QRect({ 1100, 300 }, Size));
    EXPECT_EQ(inView({ 1100, 400 }, { Left, Right }), QRect({ 1280, 400 }, Size));
}

TEST(PanelPlacementTest, MovesAPartlyHiddenPanelIntoView)
{
    EXPECT_EQ(inView({ 851, 300 }, { Left }), QRect({ 850, 300 }, Size));
    EXPECT_EQ(inView({ -1, 300 }, { Left }), QRect({ 0, 300 }, Size));
    EXPECT_EQ(inView({ 300, 375 }, { Left }), QRect({ 300, 374 }, Size));
    EXPECT_EQ(inView({ 300, -1 }, { Left }), QRect({ 300, 0 }, Size));
    EXPECT_EQ(inView({ 300, 0 }, { QRect(0, 30, 1280, 994) }), QRect({ 300, 30 }, Size));
}

TEST(PanelPlacementTest, MovesAPanelToTheNearestScreen)
{
    const QRect above(0, -1080, 1280, 1080);
    EXPECT_EQ(inView({ 3300, 300 }, { Left, Right }), QRect({ 2770, 300 }, Size));
    EXPECT_EQ(inView({ 1500, -900 }, { Left, above }), QRect({ 850, -900 }, Size));
    EXPECT_EQ(inView({ -2000, 200 }, { Right, Left }), QRect({ 0, 200 }, Size));
}

TEST(PanelPlacementTest, MovesAPanelToTheFirstOfEquallyNearScreens)
{
    const QRect west(-1999, 0, 500, 1000);
    const QRect east(1500, 0, 500, 1000);
    const QRect middle(-250, 100, 501, 600);
    EXPECT_EQ(PanelPlacement::inView(middle, Minimum, { east, west }).topLeft(), QPoint(1500, 100));
    EXPECT_EQ(PanelPlacement::inView(middle, Minimum, { west, east }).topLeft(),
              QPoint(-1999, 100));
}

TEST(PanelPlacementTest, ShrinksAPanelToASmallScreen)
{
    EXPECT_EQ(inView({ 425, -19 }, { QRect(0, 0, 1093, 614) }), QRect(425, 0, 430, 614));
    EXPECT_EQ(inView({ 100, 0 }, { QRect(0, 27, 400, 500) }), QRect(0, 27, 400, 500));
    EXPECT_EQ(inView({ 0, 0 }, { QRect(0, 0, 1920, 1080) }, { 2560, 1440 }),
              QRect(0, 0, 1920, 1080));
}

TEST(PanelPlacementTest, KeepsTheMinimumSizeAndTheTitleBarInView)
{
    EXPECT_EQ(inView({ 2000, 2000 }, { QRect(10, 20, 320, 400) }), QRect(10, 20, 390, 420));
}

TEST(PanelPlacementTest, KeepsThePanelInPlaceWithoutScreens)
{
    EXPECT_EQ(inView({ 5000, 5000 }, {}), QRect({ 5000, 5000 }, Size));
}

} // namespace
