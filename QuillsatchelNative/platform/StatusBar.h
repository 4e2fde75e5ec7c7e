#pragma once

#include "support/Published.h"

/// The part of a desktop's panel that shows the icons of running programs.
class StatusBar : public ObservableObject
{
    Q_OBJECT

public:
    /// How an icon gets there.
    enum class Kind {
        None,     ///< nothing shows icons
        Embedded, ///< as a window within the panel's
        Notifier, ///< over D-Bus, and so does its menu
    };

    /// None until `begin`, and for a while after it: panels start late, too. Follows the desktop.
    Published<Kind> kind { this, Kind::None };

    /// Begins to look. Once is enough.
    virtual void begin() = 0;
};
