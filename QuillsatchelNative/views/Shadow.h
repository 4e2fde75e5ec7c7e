#pragma once

#include <QPixmap>
#include <QSize>

/// The soft shadow below a rounded rectangle. Lengths are in points.
struct Shadow {
    double opacity; ///< from 0 to 1
    int blurRadius; ///< twice the blur's standard deviation
    int offset;     ///< downwards

    /// How far the picture of it reaches beyond the rectangle on each side.
    int margin() const { return 2 * blurRadius; }

    /// What falls beside a rectangle of `size` with these corners, `margin` wider on each side;
    /// `scale` device pixels a point. Takes a millisecond or two: worth keeping.
    QPixmap render(const QSize &size, int cornerRadius, qreal scale) const;
};
