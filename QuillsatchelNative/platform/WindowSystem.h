#pragma once

#include "platform/StartupToken.h"
#include "support/Published.h"

class QSize;
class QWindow;

/// What the desktop's window manager and compositor do beyond what every window can ask for.
class WindowSystem : public ObservableObject
{
    Q_OBJECT

public:
    /// Whether translucent windows show what is behind them. Follows a compositor that comes or
    /// goes.
    Published<bool> isCompositing { this, true };

    /// Whether what is behind translucent windows can be blurred. Follows a compositor that comes
    /// or goes.
    Published<bool> isBlurring { this, false };

    /// Whether a window manager runs. Also announced when one replaces another: it may not know
    /// what the windows on the screen asked the earlier one for.
    Published<bool> hasWindowManager { this, false };

    /// Shows a window that is on the screen on every desktop. Window managers forget it when the
    /// window is hidden: ask again after each showing. Nothing happens where it is not offered.
    virtual void showOnAllDesktops(QWindow &window) = 0;

    /// Has what is behind a window blurred, but not beyond round corners. The desktop does not
    /// learn of a change by itself: ask again after each. `size`, the window's, and `radius` are
    /// in points. Nothing happens where it is not offered.
    virtual void blurBehind(QWindow &window, const QSize &size, int radius) = 0;

    /// Brings a window that is on the screen forward and gives it the keyboard on behalf of a start
    /// that `token` is of, and tells the desktop that this start is over. Without a token it was
    /// the user's own doing all the same, by hand.
    virtual void activate(QWindow &window, const StartupToken &token) = 0;
};
