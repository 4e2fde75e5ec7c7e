#pragma once

#include <QAccessible>

class QWidget;

/// Sets the role of a custom-painted widget in the accessibility tree. Call it before
/// setAccessibleName, which creates the interface and fixes the role.
///
/// A button keeps its press action, and a checked one is reported as selected. Unless the widget is
/// a window, its `QAction`s become further actions. A dialog is modal. A widget that is scrolled
/// out of view is reported as offscreen.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);
