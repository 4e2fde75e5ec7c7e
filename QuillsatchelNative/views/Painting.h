#pragma once

#include "support/SrgbColor.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

/// The few shapes the panel is drawn with. Lengths are in points, which are logical pixels.
namespace Painting
{

/// The colour as Qt's painters take it.
QColor qColor(const SrgbColor &color);

/// The place nearest to `place` that lies on whole device pixels: a picture between two of them
/// would be soft.
QPointF onWholePixels(const QPainter &painter, const QPointF &place);

/// `rect` with each edge moved to the nearest whole device pixel. At fractional scales a widget may
/// end within a pixel, which antialiasing would cover in part only.
QRectF onWholePixels(const QPainter &painter, const QRectF &rect);

/// The width in points of a line that is about `width` points wide and covers whole device pixels,
/// at least one.
qreal wholePixelLine(const QPainter &painter, qreal width = 1);

/// The desktop's font at `points`, which are logical pixels.
QFont systemFont(int points, QFont::Weight weight = QFont::Normal);

void fillRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const SrgbColor &color);

/// The line lies inside `rect`, so that it stays crisp and is not cut off at a widget's edge.
void strokeRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const SrgbColor &color,
                       qreal width = 1);

/// Draws one line of text in the painter's font and pen, centred in height.
void drawLine(QPainter &painter, const QRect &frame, Qt::Alignment horizontally,
              const QString &text);

/// As rounded as a rectangle can be.
void fillCapsule(QPainter &painter, const QRectF &rect, const SrgbColor &color);

/// The room in points that a widget leaves for the focus ring around what fills it.
inline constexpr int FocusMargin = 3;

/// What shows that the keyboard acts here.
void focusRing(QPainter &painter, const QRectF &rect, qreal radius);

} // namespace Painting
