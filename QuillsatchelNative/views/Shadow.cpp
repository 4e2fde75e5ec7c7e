#include "views/Shadow.h"

#include "views/Painting.h"

#include <QGraphicsDropShadowEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>

#include <memory>

QPixmap Shadow::render(const QSize &size, int cornerRadius, qreal scale) const
{
    QPixmap shape(size);
    shape.fill(Qt::transparent);
    QPainter shapePainter(&shape);
    Painting::fillRoundedRect(shapePainter, shape.rect(), cornerRadius, SrgbColor::black());
    shapePainter.end();

    QGraphicsScene scene;
    auto *const item = scene.addPixmap(shape);
    auto effect = std::make_unique<QGraphicsDropShadowEffect>();
    effect->setColor(Painting::qColor(SrgbColor::black(opacity)));
    effect->setBlurRadius(blurRadius);
    effect->setOffset(0, offset);
    item->setGraphicsEffect(effect.release());

    const QRectF area = QRectF(shape.rect()).adjusted(-margin(), -margin(), margin(), margin());
    QPixmap pixmap((area.size() * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    scene.render(&painter, QRectF(QPointF(), area.size()), area);
    // Only what falls beside the rectangle, which need not be opaque.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    Painting::fillRoundedRect(painter, QRectF(QPointF(margin(), margin()), size), cornerRadius,
                              SrgbColor::black());
    return pixmap;
}
