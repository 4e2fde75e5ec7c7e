#pragma once

#include "support/SrgbColor.h"

class QPainter;
class QRect;

/// The dark material behind the tint, the same for active and inactive panels.
namespace VisualEffectBackground
{

/// Nearly opaque, so that text behind the panel never shows through.
inline constexpr SrgbColor material { 0.11, 0.11, 0.12, 0.92 };
/// Over a blurred backdrop. Just opaque enough to keep the panel's text readable on white.
inline constexpr SrgbColor blurringMaterial = material.withOpacity(0.4);

} // namespace VisualEffectBackground

/// The panel's background: material, dark tint and faint gradient on top of each other.
namespace GlassBackground
{

/// What shows through.
enum class Backdrop {
    none, ///< an opaque background, as over black
    sharp,
    blurred,
};

/// Fills `rect` with corners of `radius` points.
void paint(QPainter &painter, const QRect &rect, int radius, Backdrop backdrop);

} // namespace GlassBackground
