#pragma once

#include <QImage>

#include <string>

/// Application icons from the user's icon theme. Main thread only.
namespace ApplicationIcon
{

/// Draws `icon` (UTF-8), a name in the theme or an absolute path, or else the theme's generic icon
/// of a program; null if that is missing too. `size` points square, at `scale` pixels per point.
QImage picture(const std::string &icon, double size, double scale);

} // namespace ApplicationIcon
