#pragma once

#include "support/Published.h"

/// The panel's three flags. They live in memory only: every start begins with the values below.
class WindowPreferences final : public ObservableObject
{
    Q_OBJECT

public:
    /// The panel stays above ordinary windows.
    Published<bool> alwaysOnTop { this, true };
    /// The about card is asked for. Nothing keeps both cards from being asked for at once.
    Published<bool> showsInfoCard { this, false };
    /// The launcher settings card is asked for.
    Published<bool> showsSettingsCard { this, false };
};
