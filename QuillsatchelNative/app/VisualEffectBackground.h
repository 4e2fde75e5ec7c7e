#pragma once

#include "support/SrgbColor.h"

/// What lies behind the panel's own tint: a dark material. It looks the same whether or not the
/// panel is the active window.
namespace VisualEffectBackground
{

/// Nearly opaque, so that text behind the panel never shows through.
inline constexpr SrgbColor material { 0.11, 0.11, 0.12, 0.92 };
/// For a backdrop that is blurred: as much of it as leaves the panel's text readable on white.
inline constexpr SrgbColor blurringMaterial = material.withOpacity(0.4);

} // namespace VisualEffectBackground
