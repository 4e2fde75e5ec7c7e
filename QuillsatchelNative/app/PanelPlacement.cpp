#include "app/PanelPlacement.h"

#include <QRect>

#include <algorithm>

namespace
{

constexpr int LeastWidth = 80; // of the title bar: room for the pointer beside its buttons

bool canBeHeld(const QRect &titleBar, const QRect &area)
{
    const QRect inSight = titleBar & area;
    return inSight.width() >= std::min(LeastWidth, titleBar.width()) &&
           2 * inSight.height() >= titleBar.height();
}

QPoint nearestIn(const QRect &area, const QPoint &place)
{
    return { std::clamp(place.x(), area.left(), area.right()),
             std::clamp(place.y(), area.top(), area.bottom()) };
}

int distance(const QRect &area, const QPoint &place)
{
    return (nearestIn(area, place) - place).manhattanLength();
}

/// Where a frame of this size lies within the area; at its top left if it does not fit.
QPoint within(const QRect &area, const QRect &frame)
{
    const auto moved = [](int place, int length, int begin, int end) {
        return std::max(begin, std::min(place, end - length));
    };
    return { moved(frame.x(), frame.width(), area.x(), area.x() + area.width()),
             moved(frame.y(), frame.height(), area.y(), area.y() + area.height()) };
}

} // namespace

QPoint PanelPlacement::reachable(const QRect &frame, int titleBarHeight, const QList<QRect> &areas)
{
    const QRect titleBar(frame.topLeft(), QSize(frame.width(), titleBarHeight));
    const auto holds = [&titleBar](const QRect &area) { return canBeHeld(titleBar, area); };
    if (areas.isEmpty() || std::ranges::any_of(areas, holds))
        return frame.topLeft();
    const auto distanceFromFrame = [&frame](const QRect &area) {
        return distance(area, frame.center());
    };
    return within(*std::ranges::min_element(areas, {}, distanceFromFrame), frame);
}
