#include "support/RasterImage.h"

#include <QByteArrayList>
#include <QImageReader>

namespace RasterImage
{

namespace
{

constexpr int LargestImage = 16; // mebibytes

// Drawings (SVG) are left out: they can take any time, and name other files.
bool isKnown(const QByteArray &format)
{
    static const QByteArrayList Formats { "png", "ico", "gif", "jpeg", "bmp", "webp" };
    return Formats.contains(format);
}

bool isBetter(int width, int than, int side)
{
    const bool isEnough = width >= side;
    if (isEnough != (than >= side))
        return isEnough;
    return isEnough ? width < than : width > than;
}

/// The number of the picture that fits best among those an icon holds.
int bestPicture(QImageReader &reader, int side)
{
    int best = 0;
    int bestWidth = 0;
    for (int number = 0; number < reader.imageCount() && reader.jumpToImage(number); ++number) {
        const int width = reader.size().width();
        if (number > 0 && !isBetter(width, bestWidth, side))
            continue;
        best = number;
        bestWidth = width;
    }
    return best;
}

} // namespace

QImage read(QIODevice &bytes, int side)
{
    static const bool isLimited = [] {
        QImageReader::setAllocationLimit(LargestImage);
        return true;
    }();
    Q_UNUSED(isLimited)
    QImageReader reader(&bytes);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    if (!isKnown(format))
        return {};
    if (format == "ico" && !reader.jumpToImage(bestPicture(reader, side)))
        return {};
    return reader.read();
}

} // namespace RasterImage
