#pragma once

#include "support/SrgbColor.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

/// The basic shapes of the panel. Lengths are in points.
namespace Painting
{

QColor qColor(const SrgbColor &color);

/// `position` moved to the nearest pixel corner; an image anywhere else would be blurred.
QPointF onWholePixels(const QPainter &painter, const QPointF &position);

/// `rect` with each edge moved to the nearest pixel boundary. At fractional scales a widget may end
/// within a pixel, which antialiasing would cover only in part.
QRectF onWholePixels(const QPainter &painter, const QRectF &rect);

/// The width in points of a line that covers whole pixels, at least one, and is about `width`
/// points wide.
qreal wholePixelLine(const QPainter &painter, qreal width = 1);

/// The desktop's font in a size of `points`.
QFont systemFont(int points, QFont::Weight weight = QFont::Normal);

void fillRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const SrgbColor &color);

/// The line lies inside `rect`, so that it is sharp and is not clipped at the edge of a widget.
void strokeRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const SrgbColor &color,
                       qreal width = 1);

/// Draws one line of text with the painter's font and pen, elided to the frame and vertically
/// centred.
void drawLine(QPainter &painter, const QRect &frame, Qt::Alignment horizontally,
              const QString &text, Qt::TextElideMode elideMode = Qt::ElideRight);

/// Fills a rectangle whose shorter sides are semicircles.
void fillCapsule(QPainter &painter, const QRectF &rect, const SrgbColor &color);

/// The points that a widget leaves free around its content for the focus ring.
inline constexpr int FocusMargin = 3;

/// Marks the widget with the keyboard focus.
void focusRing(QPainter &painter, const QRectF &rect, qreal radius);

} // namespace Painting
