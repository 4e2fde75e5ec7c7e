#pragma once

#include <QList>

class QWidget;

/// The order in which Tab visits widgets. Cards and tabs change often, so the order is collected
/// from the views when Tab is pressed instead of being maintained in Qt's focus chain.
namespace FocusOrder
{

/// All descendants of `widget` that accept focus by Tab.
QList<QWidget *> stopsIn(const QWidget &widget);

/// Moves the focus to the next of `stops` that can take it, or backwards to the previous one, and
/// wraps around. False if none can take it.
bool move(const QList<QWidget *> &stops, bool forwards);

} // namespace FocusOrder
