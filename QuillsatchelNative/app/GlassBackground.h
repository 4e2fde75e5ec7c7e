#pragma once

class QPainter;
class QRect;

/// The panel's ground: the material, a dark tint and a faint gradient, one over the other.
namespace GlassBackground
{

/// Fills `rect`, rounded by `radius` points. Where nothing can shine through (`isOpaque`), the
/// colours are those over black.
void paint(QPainter &painter, const QRect &rect, int radius, bool isOpaque);

} // namespace GlassBackground
