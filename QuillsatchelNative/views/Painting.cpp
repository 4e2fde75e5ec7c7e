#include "views/Painting.h"

#include "views/EmojiRanges.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPen>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

namespace Painting
{

QColor qColor(const SrgbColor &color)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.opacity));
}

QPointF onWholePixels(const QPainter &painter, const QPointF &position)
{
    const QPointF exact = painter.deviceTransform().map(position);
    const QPointF whole(qRound(exact.x()), qRound(exact.y()));
    return painter.deviceTransform().inverted().map(whole);
}

QRectF onWholePixels(const QPainter &painter, const QRectF &rect)
{
    return { onWholePixels(painter, rect.topLeft()), onWholePixels(painter, rect.bottomRight()) };
}

qreal wholePixelLine(const QPainter &painter, qreal width)
{
    const qreal scale = painter.deviceTransform().m11();
    return std::max(1, qRound(width * scale)) / scale;
}

QFont systemFont(int points, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(points);
    font.setWeight(weight);
    return font;
}

void fillRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const SrgbColor &color)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(qColor(color));
    painter.drawRoundedRect(rect, radius, radius);
}

void strokeRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const SrgbColor &color,
                       qreal width)
{
    const qreal inset = width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(qColor(color), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
}

void drawLine(QPainter &painter, const QRect &frame, Qt::Alignment horizontally,
              const QString &text, Qt::TextElideMode elideMode)
{
    const QString elided = painter.fontMetrics().elidedText(text, elideMode, frame.width());
    const auto emoji = EmojiRanges::in(elided, painter.font());
    if (emoji.isEmpty())
        return painter.drawText(frame, horizontally | Qt::AlignVCenter | Qt::TextSingleLine,
                                elided);
    QTextLayout layout(elided, painter.font());
    layout.setFormats(emoji);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const QSizeF size(line.naturalTextWidth(), line.height());
    const QRect place = QStyle::alignedRect(QGuiApplication::layoutDirection(),
                                            horizontally | Qt::AlignVCenter, size.toSize(), frame);
    layout.draw(&painter, place.topLeft());
}

void fillCapsule(QPainter &painter, const QRectF &rect, const SrgbColor &color)
{
    fillRoundedRect(painter, rect, std::min(rect.width(), rect.height()) / 2, color);
}

void focusRing(QPainter &painter, const QRectF &rect, qreal radius)
{
    strokeRoundedRect(painter, rect, radius, SrgbColor::white(0.75), 1.5);
}

} // namespace Painting
