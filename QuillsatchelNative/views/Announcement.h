#pragma once

class QWidget;

/// Shows a widget that has the role of an alert, and has screen readers say its name, also if it
/// is shown already.
void announce(QWidget &alert);
