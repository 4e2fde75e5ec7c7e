#pragma once

#include <QImage>

#include <string>

/// Icons of applications, as the user's icon theme has them. Main thread only.
namespace ApplicationIcon
{

/// The icon that is called `icon` in the theme, or lies at the absolute path `icon` (UTF-8); where
/// there is none, what stands for programs in the theme; null where that is missing too. `size`
/// points square, at `scale` device pixels a point.
QImage picture(const std::string &icon, double size, double scale);

} // namespace ApplicationIcon
