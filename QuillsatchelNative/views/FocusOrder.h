#pragma once

#include <QList>

class QWidget;

/// The order in which Tab visits what the user sees. Lists of cards and tabs change all the time,
/// so the order is read off the views when Tab is pressed rather than kept up to date in Qt's own
/// chain.
namespace FocusOrder
{

/// All widgets below `widget` that Tab may visit.
QList<QWidget *> stopsIn(const QWidget &widget);

/// Moves the focus from where it is to the next of `stops` that can take it (or the one before),
/// round in a circle. False if there is none.
bool move(const QList<QWidget *> &stops, bool forwards);

} // namespace FocusOrder
