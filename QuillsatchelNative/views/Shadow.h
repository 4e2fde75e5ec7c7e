#pragma once

#include <QPixmap>
#include <QSize>

/// The blurred shadow of a rounded rectangle. Lengths are in points.
struct Shadow {
    double opacity; ///< from 0 to 1
    int blurRadius; ///< twice the blur's standard deviation
    int offset;     ///< downwards

    /// How far the image extends beyond the rectangle on each side.
    int margin() const { return 2 * blurRadius; }

    /// The shadow outside of a rectangle of `size`, `margin` wider on each side, at `scale` pixels
    /// per point. Takes one or two milliseconds, so keep the result.
    QPixmap render(const QSize &size, int cornerRadius, qreal scale) const;
};
