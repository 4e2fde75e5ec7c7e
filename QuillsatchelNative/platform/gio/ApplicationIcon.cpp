#include "platform/gio/ApplicationIcon.h"

#include <QFileInfo>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace ApplicationIcon
{

namespace
{

constexpr double MaximumSide = 4096; // pixels

int longerSide(const QSize &size)
{
    return std::max(size.width(), size.height());
}

QIcon loadIcon(const std::string &name)
{
    const QString text = QString::fromStdString(name);
    if (!text.contains(QLatin1Char('/')))
        return QIcon::fromTheme(text);
    const bool isFile = text.startsWith(QLatin1Char('/')) && QFileInfo(text).isFile();
    return isFile ? QIcon(text) : QIcon();
}

/// QIcon may return a smaller size although a larger one exists, and scaling down is crisper than
/// scaling up.
QPixmap crispPixmap(const QIcon &icon, double size, double scale, int side)
{
    const int points = qRound(size);
    auto nearest = icon.pixmap(QSize(points, points), scale);
    if (longerSide(nearest.size()) >= side)
        return nearest;
    auto sizes = icon.availableSizes();
    std::sort(sizes.begin(), sizes.end(), [](const QSize &one, const QSize &other) {
        return longerSide(one) < longerSide(other);
    });
    const auto larger = std::find_if(sizes.cbegin(), sizes.cend(), [side](const QSize &available) {
        return longerSide(available) >= side;
    });
    return larger == sizes.cend() ? nearest : icon.pixmap(*larger, 1.0);
}

QImage centeredOnSquare(QImage picture, int side)
{
    picture.setDevicePixelRatio(1);
    if (longerSide(picture.size()) != side)
        picture = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (picture.width() == picture.height())
        return picture;
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QPainter(&square).drawImage((side - picture.width()) / 2, (side - picture.height()) / 2,
                                picture);
    return square;
}

QImage draw(const QIcon &icon, double size, double scale, int side)
{
    QImage image = crispPixmap(icon, size, scale, side).toImage();
    if (image.isNull())
        return {};
    image = centeredOnSquare(std::move(image), side);
    image.setDevicePixelRatio(scale);
    return image;
}

} // namespace

QImage picture(const std::string &icon, double size, double scale)
{
    const double pixels = size * scale;
    if (!(scale > 0 && pixels >= 1 && pixels <= MaximumSide))
        return {};
    const int side = qRound(pixels);
    const QImage requested = draw(loadIcon(icon), size, scale, side);
    return requested.isNull() ? draw(loadIcon("application-x-executable"), size, scale, side)
                              : requested;
}

} // namespace ApplicationIcon
