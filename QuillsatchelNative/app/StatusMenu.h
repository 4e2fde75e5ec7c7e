#pragma once

#include "app/Menu.h"

#include <vector>

class LauncherStore;

/// The menu of the icon in the desktop's status bar.
namespace StatusMenu
{

/// In points, square.
constexpr int LauncherIconSize = 18;

/// The menu for the launchers there are, with their icons for `scale` device pixels a point.
Menu make(bool isAlwaysOnTop, const LauncherStore &launchers, double scale);

/// Its entries for launchers, in slot order.
std::vector<MenuItem> makeLauncherItems(const LauncherStore &launchers, double scale);

} // namespace StatusMenu
