#include "app/PanelPlacement.h"

#include <QMargins>
#include <QRegion>
#include <QSize>

#include <algorithm>

namespace
{

constexpr int RoundingError = 1; // points

bool isWithin(const QRect &frame, const QList<QRect> &areas)
{
    QRegion outside(frame);
    for (const QRect &area : areas)
        outside -= area;
    return outside.isEmpty();
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

/// The frame moved into the area; at the top left if it does not fit.
QRect movedInto(const QRect &area, const QRect &frame)
{
    const auto moved = [](int place, int length, int begin, int end) {
        return std::max(begin, std::min(place, end - length));
    };
    return { QPoint(moved(frame.x(), frame.width(), area.x(), area.x() + area.width()),
                    moved(frame.y(), frame.height(), area.y(), area.y() + area.height())),
             frame.size() };
}

} // namespace

QRect PanelPlacement::availableArea(const QRect &screen, const QRect &reported, qreal scale)
{
    if (screen.marginsAdded(QMargins(0, 0, RoundingError, RoundingError)).contains(reported))
        return reported;
    return { screen.topLeft() + (reported.topLeft() - screen.topLeft()) / scale, reported.size() };
}

QRect PanelPlacement::inView(const QRect &frame, const QSize &minimum, const QList<QRect> &areas)
{
    if (areas.isEmpty() || isWithin(frame, areas))
        return frame;
    const auto distanceFromFrame = [&frame](const QRect &area) {
        return distance(area, frame.center());
    };
    const QRect area = *std::ranges::min_element(areas, {}, distanceFromFrame);
    const QSize size = frame.size().boundedTo(area.size()).expandedTo(minimum);
    return movedInto(area, QRect(frame.topLeft(), size));
}
