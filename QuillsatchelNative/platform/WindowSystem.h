#pragma once

#include "support/Published.h"

class QWindow;

/// What the desktop's window manager and compositor do beyond what every window can ask for.
class WindowSystem : public ObservableObject
{
    Q_OBJECT

public:
    /// Whether translucent windows show what is behind them. Follows a compositor that comes or
    /// goes.
    Published<bool> isCompositing { this, true };

    /// Shows a window that is on the screen on every desktop. Window managers forget it when the
    /// window is hidden: ask again after each showing. Nothing happens where it is not offered.
    virtual void showOnAllDesktops(QWindow &window) = 0;
};
