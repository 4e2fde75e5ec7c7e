#pragma once

#include "app/Menu.h"

/// The program's own menus, in the order in which a menu bar shows them.
namespace MainMenu
{

/// About, settings, hide and quit.
Menu makeApplicationMenu();

/// What can be done with the text that has the focus.
Menu makeEditMenu();

} // namespace MainMenu
