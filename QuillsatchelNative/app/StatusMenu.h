#pragma once

#include "app/MenuItem.h"

#include <vector>

class LauncherStore;

/// The menu of the tray icon.
namespace StatusMenu
{

/// All entries, top to bottom. Renders launcher icons for `scale` pixels per point.
std::vector<MenuItem> make(bool isAlwaysOnTop, const LauncherStore &launchers, double scale);

/// The launcher entries only, in slot order.
std::vector<MenuItem> makeLauncherItems(const LauncherStore &launchers, double scale);

} // namespace StatusMenu
