#include "views/RowLayout.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

using Rows = RowLayout::Rows;

constexpr int RowHeight = 90; // plus 10 points between rows
constexpr int Height = 250;

RowLayout layout(std::size_t count, int offset)
{
    return { count, RowHeight, Height, offset };
}

TEST(RowLayoutTest, StacksRows)
{
    EXPECT_EQ(layout(3, 0).topOf(0), 10);
    EXPECT_EQ(layout(3, 0).topOf(2), 210);
    EXPECT_EQ(layout(3, 30).topOf(2), 180);
}

TEST(RowLayoutTest, ScrollRangeIncludesTheSpaceBelowTheLastRow)
{
    EXPECT_EQ(layout(0, 0).scrollRange(), 0);
    EXPECT_EQ(layout(2, 0).scrollRange(), 0);
    EXPECT_EQ(layout(3, 0).scrollRange(), 10 + 3 * 100 - Height);
}

TEST(RowLayoutTest, RowsAreVisibleWhileAPointOfThemShows)
{
    EXPECT_EQ(layout(10, 0).visibleRows(), (Rows { 0, 3 }));
    EXPECT_EQ(layout(10, 99).visibleRows(), (Rows { 0, 4 })) << "one point of the first row";
    EXPECT_EQ(layout(10, 110).visibleRows(), (Rows { 1, 4 }));
    EXPECT_EQ(layout(2, 0).visibleRows(), (Rows { 0, 2 }));
    EXPECT_EQ(layout(0, 0).visibleRows(), (Rows { 0, 0 }));
}

TEST(RowLayoutTest, NearbyIncludesOneScreenAround)
{
    EXPECT_EQ(layout(100, 0).nearbyRows(), (Rows { 0, 6 }));
    EXPECT_EQ(layout(100, 5'010).nearbyRows(), (Rows { 47, 56 }));
    EXPECT_EQ(layout(100, layout(100, 0).scrollRange()).nearbyRows(), (Rows { 94, 100 }));
    EXPECT_EQ(layout(0, 0).nearbyRows(), (Rows { 0, 0 }));
}

TEST(RowLayoutTest, NothingIsVisiblePastTheEnd)
{
    EXPECT_EQ(layout(2, 1'000).visibleRows(), (Rows { 2, 2 }));
    EXPECT_EQ(layout(2, 1'000).nearbyRows(), (Rows { 1, 2 }));
}

TEST(RowLayoutTest, RevealsARowWithMinimalScrolling)
{
    EXPECT_EQ(layout(10, 500).offsetToReveal(2), 200) << "above: to the top";
    EXPECT_EQ(layout(10, 0).offsetToReveal(5), 10 + 6 * 100 - Height) << "below: to the bottom";
    EXPECT_EQ(layout(10, 150).offsetToReveal(2), 150) << "already visible";
}

TEST(RowLayoutTest, ClampsFarPositionsToTheWidgetLimit)
{
    constexpr std::size_t Many = 1'000'000'000;
    EXPECT_EQ(layout(Many, 0).topOf(999'999'999), 100'000);
    EXPECT_EQ(layout(Many, 2'000'000'000).topOf(0), -100'000);
    EXPECT_EQ(layout(Many, 0).scrollRange(), std::numeric_limits<int>::max());
}

} // namespace
