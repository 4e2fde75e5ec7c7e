#include "platform/desktop/RoundedRegion.h"

#include <QPoint>
#include <QSize>
#include <gtest/gtest.h>

#include <algorithm>

namespace
{

constexpr QSize Size(60, 50);

/// Whether the pixel lies entirely inside the rectangle with these corners.
bool isWithin(const QPoint &pixel, int radius)
{
    // Distances of the pixel's outer corner from the nearest corner of the rectangle.
    const int across = std::min(pixel.x(), Size.width() - 1 - pixel.x());
    const int down = std::min(pixel.y(), Size.height() - 1 - pixel.y());
    if (across >= radius || down >= radius)
        return true;
    const int x = radius - across;
    const int y = radius - down;
    return x * x + y * y <= radius * radius;
}

TEST(RoundedRegionTest, HasThePixelsInsideItsCorners)
{
    for (const int radius : { 0, 1, 10, 13, 20 }) {
        const QRegion region = RoundedRegion::of(Size, radius);
        EXPECT_EQ(region.boundingRect(), QRect(QPoint(), Size)) << radius;
        for (int y = 0; y < Size.height(); ++y) {
            for (int x = 0; x < Size.width(); ++x)
                EXPECT_EQ(region.contains(QPoint(x, y)), isWithin({ x, y }, radius))
                    << x << ", " << y << " by " << radius;
        }
    }
}

TEST(RoundedRegionTest, IsOneRectangleWithoutARadius)
{
    EXPECT_EQ(RoundedRegion::of(Size, 0), QRegion(QRect(QPoint(), Size)));
}

} // namespace
