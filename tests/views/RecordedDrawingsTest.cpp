#include "views/Picture.h"
#include "views/Symbol.h"

#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QSvgRenderer>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace
{

using namespace Qt::StringLiterals;

const QString Folder = QStringLiteral(DRAWINGS); // the SVG files

QFileInfoList drawings()
{
    const QStringList names { u"*.svg"_s };
    return QDir(Folder).entryInfoList(names) + QDir(Folder + u"/symbols"_s).entryInfoList(names);
}

QImage transparentImage(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The drawing in the middle of a square, painted from its SVG file.
QImage paintedFromFile(const QString &path, int side, const std::optional<QColor> &tint)
{
    QSvgRenderer renderer(path);
    const QSizeF original = renderer.defaultSize();
    QImage drawing = transparentImage(original.scaled(side, side, Qt::KeepAspectRatio).toSize());
    QPainter painter(&drawing);
    renderer.render(&painter, drawing.rect());
    if (tint) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(drawing.rect(), *tint);
    }
    painter.end();
    QImage image = transparentImage({ side, side });
    QRectF place(drawing.rect());
    place.moveCenter(QRectF(image.rect()).center());
    QPainter(&image).drawImage(place.topLeft().toPoint(), drawing);
    return image;
}

QImage painted(const QString &name, int side, const std::optional<SrgbColor> &tint)
{
    QImage image = transparentImage({ side, side });
    QPainter painter(&image);
    Symbol::paint(painter, name, image.rect(), tint);
    return image;
}

/// The largest difference of a channel, of 255.
int greatestDifference(const QImage &image, const QImage &other)
{
    int greatest = 0;
    for (qsizetype index = 0; index < image.sizeInBytes(); ++index)
        greatest =
            std::max(greatest, std::abs(image.constBits()[index] - other.constBits()[index]));
    return greatest;
}

/// A recording contains rounded rectangles as paths. Qt 6.11 draws those of a file directly, with
/// slightly different corners, which shows in the smallest size only.
int toleranceAt(int side)
{
    return side == 12 ? 48 : 0;
}

TEST(RecordedDrawingsTest, MatchTheirFilesInManySizesAndTints)
{
    ASSERT_GE(drawings().size(), 26);
    for (const QFileInfo &drawing : drawings()) {
        const QString name = drawing.completeBaseName();
        for (const int side : { 12, 16, 18, 20, 24, 30, 36, 48, 60, 96, 128, 300 }) {
            for (const auto &tint : { std::optional<SrgbColor>(), std::optional(SrgbColor::white()),
                                      std::optional(SrgbColor { 0.91, 0.16, 0.17 }),
                                      std::optional(SrgbColor::white(0.5)) }) {
                const auto color = tint ? std::optional(Painting::qColor(*tint)) : std::nullopt;
                EXPECT_LE(greatestDifference(painted(name, side, tint),
                                             paintedFromFile(drawing.filePath(), side, color)),
                          toleranceAt(side))
                    << name.toStdString() << " " << side;
            }
        }
    }
}

TEST(RecordedDrawingsTest, MatchTheFileOfTheApplicationIcon)
{
    const QIcon icon = Symbol::applicationIcon(u"DockIcon"_s);
    for (const QSize &size : icon.availableSizes())
        EXPECT_EQ(icon.pixmap(size, 1).toImage(),
                  paintedFromFile(Folder + u"/DockIcon.svg"_s, size.width(), std::nullopt))
            << size.width();
}

} // namespace
