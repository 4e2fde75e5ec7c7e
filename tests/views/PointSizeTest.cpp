#include "views/PointSize.h"

#include <QTest>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace
{

TEST(PointSizeTest, FindsTheSmallestWholePixelStep)
{
    EXPECT_EQ(PointSize::stepAt(1), 1);
    EXPECT_EQ(PointSize::stepAt(2), 1);
    EXPECT_EQ(PointSize::stepAt(1.25), 4);
    EXPECT_EQ(PointSize::stepAt(1.5), 2);
    EXPECT_EQ(PointSize::stepAt(1.75), 4);
    EXPECT_EQ(PointSize::stepAt(1.2), 5);
    EXPECT_EQ(PointSize::stepAt(97.0 / 96), 1);
}

TEST(PointSizeTest, SetsTheWindowSizes)
{
    QWidget window;
    PointSize size(window);
    size.setSizes({ 430, 650 }, { 390, 420 });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.size(), QSize(430, 650));
    EXPECT_EQ(window.minimumSize(), QSize(390, 420));
    EXPECT_EQ(window.windowHandle()->sizeIncrement(), QSize(1, 1));
}

} // namespace
