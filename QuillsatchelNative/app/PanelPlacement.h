#pragma once

#include <QList>
#include <QRect>

class QSize;

/// Where a panel lies on the screens, in points.
namespace PanelPlacement
{

/// The frame nearest to `frame` of which the user sees all: `frame` itself if it lies within
/// `areas`, the free areas of the screens, even across several. Otherwise it moves into the nearest
/// area, the first of equally near ones, and shrinks to fit, but never below `least`. What still
/// does not fit is cut off at the right and at the bottom: the title bar stays in view. Without
/// areas nothing changes.
QRect inView(const QRect &frame, const QSize &least, const QList<QRect> &areas);

} // namespace PanelPlacement
