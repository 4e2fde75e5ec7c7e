#pragma once

#include "support/Published.h"

/// The part of the desktop's panel that shows icons of running programs.
class StatusBar : public ObservableObject
{
    Q_OBJECT

public:
    /// How the desktop shows icons.
    enum class Kind {
        none,     ///< not at all
        embedded, ///< as a window inside the desktop's panel
        notifier, ///< over D-Bus, together with the menu
    };

    /// None until some time after `begin`, because desktop panels can start late. Follows the
    /// desktop.
    Published<Kind> kind { this, Kind::none };

    /// Starts watching the desktop. Call it once.
    virtual void begin() = 0;

    /// Whether the desktop shows the menus of programs in a global menu bar. Makes a D-Bus call.
    virtual bool hasMenuBar() const = 0;
};
