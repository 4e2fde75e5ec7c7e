#include "views/Symbol.h"

#include "views/Painting.h"
#include "views/SymbolIconEngine.h"

#include <QFile>
#include <QPainter>
#include <QPicture>
#include <QPixmapCache>

#include <optional>

namespace Symbol
{

namespace
{

using namespace Qt::StringLiterals;

QString fileOf(const QString &name)
{
    return u":/symbols/"_s + name + u".picture"_s;
}

std::optional<QColor> colorOf(const std::optional<SrgbColor> &tint)
{
    return tint ? std::optional(Painting::qColor(*tint)) : std::nullopt;
}

/// Null for an unknown name. The size of the drawing is that of the bounding rectangle.
QPicture drawingOf(const QString &name)
{
    QPicture drawing;
    drawing.load(fileOf(name));
    return drawing;
}

/// The drawing scaled to `size` in pixels.
QPixmap render(const QPicture &drawing, const QSize &size, const std::optional<QColor> &tint)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const QSizeF original = drawing.boundingRect().size();
    painter.scale(size.width() / original.width(), size.height() / original.height());
    painter.drawPicture(0, 0, drawing);
    painter.resetTransform();
    if (tint) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), *tint);
    }
    return pixmap;
}

QPixmap cachedPixmap(const QString &name, const QSizeF &frame, qreal scale,
                     const std::optional<QColor> &tint)
{
    const auto key = u"%1 %2x%3@%4 %5"_s.arg(name)
                         .arg(frame.width())
                         .arg(frame.height())
                         .arg(scale)
                         .arg(tint ? tint->rgba() : 0U);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    const QPicture drawing = drawingOf(name);
    if (drawing.isNull())
        return {};
    const QSizeF original = drawing.boundingRect().size();
    const QSizeF fitting = original.scaled(frame * scale, Qt::KeepAspectRatio);
    pixmap = render(drawing, fitting.toSize(), tint);
    pixmap.setDevicePixelRatio(scale);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace

void paint(QPainter &painter, const QString &name, const QRectF &frame,
           const std::optional<SrgbColor> &tint)
{
    const qreal scale = painter.device()->devicePixelRatio();
    const QPixmap pixmap = cachedPixmap(name, frame.size(), scale, colorOf(tint));
    if (pixmap.isNull())
        return;
    QRectF place(QPointF(), pixmap.deviceIndependentSize());
    place.moveCenter(frame.center());
    painter.drawPixmap(Painting::onWholePixels(painter, place.topLeft()), pixmap);
}

QIcon menuIcon(const QString &name, const std::optional<SrgbColor> &tint, int side,
               WhenSelected whenSelected)
{
    if (!QFile::exists(fileOf(name)))
        return {};
    return QIcon(new SymbolIconEngine(name, tint, side, whenSelected)); // owned by the icon
}

QIcon applicationIcon(const QString &name)
{
    const QPicture drawing = drawingOf(name);
    if (drawing.isNull())
        return {};
    QIcon icon;
    for (const int side : { 16, 22, 24, 32, 48, 64, 128 })
        icon.addPixmap(render(drawing, QSize(side, side), std::nullopt));
    return icon;
}

} // namespace Symbol
