#pragma once

#include <QList>
#include <QRect>
#include <QtGlobal>

class QSize;

/// Positions of a panel on the screens, in points.
namespace PanelPlacement
{

/// The available area of a screen. Qt 6.11 reports its distance from the screen's top left corner
/// in pixels. This returns points where that is evident, because the area would leave the screen.
QRect availableArea(const QRect &screen, const QRect &reported, qreal scale);

/// Returns `frame` if `areas`, the available areas of the screens, cover it, even several together.
/// Otherwise moves it into the nearest area (the first of equally near ones) and shrinks it to fit,
/// but never below `minimum`. A frame that still does not fit extends beyond the right and bottom
/// edges, so that the title bar stays in view. Without areas, returns `frame`.
QRect inView(const QRect &frame, const QSize &minimum, const QList<QRect> &areas);

} // namespace PanelPlacement
