#pragma once

#include <QRegion>

class QSize;

/// A rectangle with rounded corners.
namespace RoundedRegion
{

/// The pixels that lie entirely within a rectangle at the origin. All lengths in pixels.
QRegion of(const QSize &size, int radius);

} // namespace RoundedRegion
