#pragma once

#include <QRegion>

class QSize;

/// The pixels of a rectangle with round corners.
namespace RoundedRegion
{

/// From the origin, all that lie wholly within corners of `radius` pixels.
QRegion of(const QSize &size, int radius);

} // namespace RoundedRegion
