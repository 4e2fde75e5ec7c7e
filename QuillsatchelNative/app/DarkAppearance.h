#pragma once

/// The one look of the program's menus, tooltips and standard controls, whatever style and
/// colours the desktop is set to.
namespace DarkAppearance
{

/// Needs the QApplication; to be called before any window is shown.
void apply();

} // namespace DarkAppearance
