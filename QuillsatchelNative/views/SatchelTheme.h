#pragma once

#include "support/SrgbColor.h"

/// The common colours of the panel's views.
namespace SatchelTheme
{

inline constexpr SrgbColor raised { 0.125, 0.12, 0.14 };
inline constexpr SrgbColor border = SrgbColor::white(0.1);
inline constexpr SrgbColor secondary = SrgbColor::white(0.56);
inline constexpr SrgbColor accent { 0.91, 0.16, 0.17 };

} // namespace SatchelTheme
