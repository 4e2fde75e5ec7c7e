#include "platform/desktop/RoundedRegion.h"

#include <QSize>

#include <cmath>

namespace
{

/// The pixels to cut from each side of a row; rows count from the top or bottom edge.
int insetOf(int row, int radius)
{
    const double rise = radius - row; // from the circle's center to the row's outer edge
    return static_cast<int>(std::ceil(radius - std::sqrt(radius * radius - rise * rise)));
}

} // namespace

QRegion RoundedRegion::of(const QSize &size, int radius)
{
    QRegion region(0, radius, size.width(), size.height() - 2 * radius);
    for (int row = 0; row < radius; ++row) {
        const int inset = insetOf(row, radius);
        const int width = size.width() - 2 * inset;
        region += QRect(inset, row, width, 1);
        region += QRect(inset, size.height() - 1 - row, width, 1);
    }
    return region;
}
