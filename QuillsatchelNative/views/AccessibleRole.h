#pragma once

#include <QAccessible>

class QWidget;

/// Gives a widget that we draw ourselves the role under which assistive programs know it. A
/// button keeps its press action, and one that is checked is the selected one. To be called before
/// the widget is named: naming it settles what it is known as.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);
