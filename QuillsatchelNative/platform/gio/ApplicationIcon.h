#pragma once

#include <QImage>

#include <string>

/// Application icons from the user's icon theme. Main thread only.
namespace ApplicationIcon
{

/// `icon` (UTF-8) is a name in the theme or an absolute path. Falls back to the theme's generic
/// icon of a program; null if that is missing too. `size` points square, at `scale` pixels per
/// point.
QImage picture(const std::string &icon, double size, double scale);

} // namespace ApplicationIcon
