#include "views/Shadow.h"

#include "views/Picture.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

constexpr Shadow Example { .opacity = 0.6, .blurRadius = 20, .offset = 10 };
constexpr int Margin = 40;
constexpr int Radius = 20;

Picture pictureOf(const QSize &size, qreal scale)
{
    const QPixmap shadow = Example.render(size, Radius, scale);
    const QSize whole = size + QSize(2 * Margin, 2 * Margin);
    EXPECT_EQ(shadow.deviceIndependentSize().toSize(), whole);
    return { whole, scale, Qt::white,
             [&shadow](QPainter &painter) { painter.drawPixmap(QPoint(), shadow); } };
}

TEST(ShadowTest, DrawsOnlyOutsideTheRectangle)
{
    for (const qreal scale : { 1.0, 2.0 }) {
        const Picture shadow = pictureOf({ 300, 200 }, scale);
        const QRectF inside(Margin + 6, Margin + 6, 300 - 12, 200 - 12);
        EXPECT_EQ(shadow.inkIn(inside, Qt::white), QRectF());
        EXPECT_NE(shadow.inkIn({ Margin, Margin + 200, 300, 20 }, Qt::white), QRectF());
        EXPECT_TRUE(isColor(shadow.at(1, 1), Qt::white));
    }
}

TEST(ShadowTest, FallsDownwardsAndFades)
{
    const Picture shadow = pictureOf({ 300, 200 }, 1);
    const auto brightnessBelow = [&shadow](qreal distance) {
        return shadow.at(Margin + 150, Margin + 200 + distance).lightness();
    };
    // At the offset edge the shadow has half its strength.
    EXPECT_NEAR(brightnessBelow(10), 255 * (1 - 0.6 / 2), 3);
    EXPECT_LT(brightnessBelow(1), brightnessBelow(10));
    EXPECT_LT(brightnessBelow(10), brightnessBelow(20));
    EXPECT_LT(brightnessBelow(1), shadow.at(Margin + 150, Margin - 2).lightness() - 60);
}

TEST(ShadowTest, LooksTheSameAtEveryScale)
{
    const Picture once = pictureOf({ 300, 200 }, 1);
    const Picture twice = pictureOf({ 300, 200 }, 2);
    for (const QPointF position : { QPointF(20.5, 100.5), QPointF(190.5, 250.5),
                                    QPointF(35.5, 245.5), QPointF(345.5, 120.5) })
        EXPECT_TRUE(
            isColor(once.at(position.x(), position.y()), twice.at(position.x(), position.y()), 6));
}

TEST(ShadowTest, LooksTheSameAtEverySize)
{
    const Picture small = pictureOf({ 180, 180 }, 1);
    const Picture large = pictureOf({ 500, 700 }, 1);
    for (int offset = 0; offset < Margin; ++offset) {
        const auto depth = offset + 0.5;
        EXPECT_TRUE(isColor(large.at(depth, depth), small.at(depth, depth))) << offset;
        EXPECT_TRUE(isColor(large.at(580 - depth, 780 - depth), small.at(260 - depth, 260 - depth)))
            << offset;
        for (const qreal along : { 150.5, 400.5, 600.5 })
            EXPECT_TRUE(isColor(large.at(depth, along), small.at(depth, 130.5))) << offset;
        for (const qreal along : { 150.5, 400.5 })
            EXPECT_TRUE(isColor(large.at(along, 780 - depth), small.at(130.5, 260 - depth)))
                << offset;
    }
}

TEST(ShadowTest, SupportsShapesSmallerThanTheBlur)
{
    for (const QSize size : { QSize(50, 50), QSize(300, 50), QSize(50, 300) }) {
        const Picture shadow = pictureOf(size, 1);
        const qreal below = Margin + size.height() + 2;
        EXPECT_FALSE(isColor(shadow.at(Margin + size.width() / 2.0, below), Qt::white, 20));
    }
}

} // namespace
