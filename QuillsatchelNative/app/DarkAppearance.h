#pragma once

/// The dark style of menus, tooltips and standard controls, independent of the desktop's settings.
namespace DarkAppearance
{

/// Call after creating the QApplication and before showing a window.
void apply();

} // namespace DarkAppearance
