#pragma once

#include "support/Published.h"

/// The panel's three flags. They are not saved: every start begins with the values below.
class WindowPreferences final : public ObservableObject
{
    Q_OBJECT

public:
    /// Whether the panel stays above ordinary windows.
    Published<bool> alwaysOnTop { this, true };
    /// Whether to show the about card. Both cards can be requested at the same time.
    Published<bool> showsInfoCard { this, false };
    /// Whether to show the launcher settings card.
    Published<bool> showsSettingsCard { this, false };
};
