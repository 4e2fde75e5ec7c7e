#pragma once

#include <QAccessible>

class QWidget;

/// Gives a widget that we draw ourselves the role under which assistive programs know it. A
/// button keeps its press action, and one that is checked is the selected one; the `QAction`s of a
/// widget that is no window are what else can be done with it. A dialog keeps the focus, and what
/// is scrolled out of sight says so. To be called before the widget is named: naming it settles
/// what it is known as.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);
