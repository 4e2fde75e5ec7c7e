#pragma once

class QPainter;
class QRect;

/// The panel's ground: the material, a dark tint and a faint gradient, one over the other.
namespace GlassBackground
{

/// What shines through.
enum class Backdrop {
    None, ///< the colours are those over black
    Sharp,
    Blurred,
};

/// Fills `rect`, rounded by `radius` points.
void paint(QPainter &painter, const QRect &rect, int radius, Backdrop backdrop);

} // namespace GlassBackground
