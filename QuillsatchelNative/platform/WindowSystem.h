#pragma once

#include "platform/StartupToken.h"
#include "support/Published.h"

class QSize;
class QWindow;

/// Services of the window manager and compositor that Qt does not offer.
class WindowSystem : public ObservableObject
{
    Q_OBJECT

public:
    /// Whether translucent windows show what is behind them. Follows the compositor.
    Published<bool> isCompositing { this, true };

    /// Whether the compositor can blur what is behind translucent windows. Follows the compositor.
    Published<bool> isBlurring { this, false };

    /// Whether a window manager is running. Also published when another one takes over, because
    /// the new one may not know what visible windows requested from the previous one.
    Published<bool> hasWindowManager { this, false };

    /// Shows a visible window on every virtual desktop. Window managers forget this when the
    /// window is hidden, so call it after each show. Does nothing if unsupported.
    virtual void showOnAllDesktops(QWindow &window) = 0;

    /// Blurs what is behind a window with rounded corners. `size` (of the window) and
    /// `radius` (of its corners) are in points. Call it after each change of either. Does nothing
    /// if unsupported.
    virtual void blurBehind(QWindow &window, const QSize &size, int radius) = 0;

    /// Raises a visible window, gives it the keyboard focus, and tells the desktop that the launch
    /// identified by `token` is complete. An empty token counts as a direct user action.
    virtual void activate(QWindow &window, const StartupToken &token) = 0;
};
