#include "views/FocusOrder.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace FocusOrder
{

namespace
{

bool isStop(const QWidget *widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) != 0;
}

/// The index of the stop that has the focus or contains it; -1 if no stop does.
qsizetype currentStop(const QList<QWidget *> &stops)
{
    const QWidget *const focus = QApplication::focusWidget();
    const auto found = std::ranges::find_if(
        stops, [focus](const QWidget *stop) { return stop == focus || stop->isAncestorOf(focus); });
    return found == stops.end() ? -1 : found - stops.begin();
}

} // namespace

QList<QWidget *> stopsIn(const QWidget &widget)
{
    QList<QWidget *> stops = widget.findChildren<QWidget *>();
    stops.removeIf([](const QWidget *stop) { return !isStop(stop); });
    return stops;
}

bool move(const QList<QWidget *> &stops, bool forwards)
{
    const auto count = stops.size();
    const auto current = currentStop(stops);
    const auto start = current < 0 && !forwards ? count : current;
    for (qsizetype distance = 1; distance <= count; ++distance) {
        const auto index = start + (forwards ? distance : -distance);
        auto *const stop = stops[((index % count) + count) % count];
        if (!isStop(stop) || !stop->isVisible() || !stop->isEnabled())
            continue;
        stop->setFocus(forwards ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

} // namespace FocusOrder
