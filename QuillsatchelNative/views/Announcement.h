#pragma once

class QWidget;

/// Shows a widget whose accessible role is alert, and makes screen readers speak its name, even if
/// it is visible already.
void announce(QWidget &alert);
