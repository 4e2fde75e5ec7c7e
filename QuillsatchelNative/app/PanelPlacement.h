#pragma once

#include <QList>
#include <QRect>

class QSize;

/// Positions of a panel on the screens, in points.
namespace PanelPlacement
{

/// Returns `frame` if `areas`, the available areas of the screens, cover it, even several together.
/// Otherwise moves it into the nearest area (the first of equally near ones) and shrinks it to fit,
/// but never below `minimum`. A frame that still does not fit extends beyond the right and bottom
/// edges, so that the title bar stays in view. Without areas, returns `frame`.
QRect inView(const QRect &frame, const QSize &minimum, const QList<QRect> &areas);

} // namespace PanelPlacement
