#pragma once

#include "support/SrgbColor.h"

/// What lies behind the panel's own tint: a dark material, nearly opaque, so that text behind the
/// panel never shows through. It looks the same whether or not the panel is the active window.
namespace VisualEffectBackground
{

inline constexpr SrgbColor material { 0.11, 0.11, 0.12, 0.92 };

} // namespace VisualEffectBackground
