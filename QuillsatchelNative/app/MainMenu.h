#pragma once

#include "app/MenuItem.h"

#include <vector>

namespace MainMenu
{

/// About, settings, hide and quit, top to bottom.
std::vector<MenuItem> makeApplicationMenu();

} // namespace MainMenu
