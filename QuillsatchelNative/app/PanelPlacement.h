#pragma once

#include <QList>
#include <QPoint>

class QRect;

/// Where on the screens the user can take hold of a panel.
namespace PanelPlacement
{

/// The place nearest to that of `frame` at which its title bar, as wide as the frame and
/// `titleBarHeight` high, can be taken hold of: where it is, if enough of the bar lies within one
/// of `areas`, the free areas of the screens; otherwise wholly within the nearest of them, or at
/// its top left if it does not fit. Among equally near areas the first counts. With no areas at
/// all it stays.
QPoint reachable(const QRect &frame, int titleBarHeight, const QList<QRect> &areas);

} // namespace PanelPlacement
