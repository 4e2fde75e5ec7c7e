#include "support/RasterImage.h"

#include "support/PngImage.h"
#include "support/WatchedBuffer.h"

#include <QBuffer>
#include <QImageReader>
#include <QLoggingCategory>
#include <QtEndian>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <optional>
#include <vector>

namespace RasterImage
{

namespace
{

constexpr qint64 MostPixels = qint64(2048) * 2048;
constexpr qsizetype MostScans = 100; // pictures meant to be seen have about ten

/// Qt's name of the format that the bytes begin as; empty for all but these. Qt would ask every
/// plug-in instead, and drawings (SVG) can take any time and name other files.
QByteArray formatOf(const QByteArray &bytes)
{
    if (bytes.startsWith("GIF8"))
        return "gif";
    if (bytes.startsWith("\xFF\xD8\xFF"))
        return "jpeg";
    if (bytes.startsWith("BM"))
        return "bmp";
    return bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP" ? "webp" : "";
}

/// A few bytes are enough to have a progressive JPEG go over its pixels any number of times.
bool hasTooManyScans(const QByteArray &bytes)
{
    return bytes.count("\xFF\xDA") > MostScans;
}

/// For the whole process: a broken image is not worth a line in the log.
void silenceReaders()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
}

/// As bitmaps and icons write it. Zero where the bytes end before it.
quint32 numberAt(const QByteArray &bytes, qsizetype place)
{
    constexpr qsizetype Size = sizeof(quint32);
    const auto number = bytes.mid(place, Size);
    return number.size() == Size ? qFromLittleEndian<quint32>(number.constData()) : 0;
}

bool isSmall(qint64 width, qint64 height)
{
    return width > 0 && width <= MostPixels && height <= MostPixels && width * height <= MostPixels;
}

/// Qt's reader gives the size of the first frame instead, but allocates this one.
bool isSmallGif(const QByteArray &gif)
{
    const auto size = numberAt(gif, 6);
    return isSmall(size & 0xFFFF, size >> 16);
}

/// Qt's own limit is for the whole process, and icons of applications may be larger.
QImage readSmall(QImageReader &reader)
{
    const auto size = reader.size();
    const auto height = std::abs(qint64(size.height())); // negative in a bitmap stored upside down
    return isSmall(size.width(), height) ? reader.read() : QImage();
}

/// Whether a bitmap has its points in runs, which may skip some.
bool isPacked(const QByteArray &bitmap)
{
    constexpr quint32 OldestHeader = 12; // knows no packing
    constexpr quint32 RunsOfBytes = 1;
    constexpr quint32 RunsOfHalfBytes = 2;
    const auto headerSize = numberAt(bitmap, 14);
    const auto packing = numberAt(bitmap, 30);
    return headerSize != OldestHeader && (packing == RunsOfBytes || packing == RunsOfHalfBytes);
}

/// The bitmap if it has all its points: what is left out, its reader leaves as the memory was.
QImage readBitmap(const QByteArray &bytes)
{
    if (isPacked(bytes))
        return {};
    WatchedBuffer buffer(bytes);
    QImageReader reader(&buffer, "bmp");
    reader.setAutoDetectImageFormat(false);
    QImage image = readSmall(reader);
    return buffer.wasEnough() ? image : QImage();
}

QImage readPlain(const QByteArray &bytes)
{
    if (PngImage::isPng(bytes))
        return PngImage::read(bytes, MostPixels);
    const auto format = formatOf(bytes);
    if (format == "bmp")
        return readBitmap(bytes);
    if (format.isEmpty() || (format == "gif" && !isSmallGif(bytes)) ||
        (format == "jpeg" && hasTooManyScans(bytes)))
        return {};
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    return readSmall(reader);
}

/// What an icon's directory says of one of its images.
struct IconEntry {
    QByteArray description; ///< the entry without the image's place
    int width;
    quint32 length;
    quint32 place;
};

/// None where the bytes end before it.
std::optional<IconEntry> iconEntry(const QByteArray &icon, int number)
{
    constexpr qsizetype HeaderSize = 6;
    constexpr qsizetype EntrySize = 16;
    constexpr qsizetype Length = 8;
    constexpr qsizetype Place = 12;
    const auto entry = icon.mid(HeaderSize + EntrySize * number, EntrySize);
    if (entry.size() < EntrySize)
        return std::nullopt;
    const auto width = static_cast<unsigned char>(entry.front());
    return IconEntry { .description = entry.first(Place),
                       .width = width == 0 ? 256 : width,
                       .length = numberAt(entry, Length),
                       .place = numberAt(entry, Place) };
}

bool isBetter(int width, int than, int side)
{
    const bool isEnough = width >= side;
    if (isEnough != (than >= side))
        return isEnough;
    return isEnough ? width < than : width > than;
}

/// The images of an icon, the most suitable first.
std::vector<IconEntry> entriesOf(const QByteArray &icon, int side)
{
    constexpr qsizetype CountPlace = 4;
    const int count = qFromLittleEndian<quint16>(icon.constData() + CountPlace);
    std::vector<IconEntry> entries;
    for (int number = 0; number < count; ++number) {
        const auto entry = iconEntry(icon, number);
        if (!entry)
            break;
        entries.push_back(*entry);
    }
    std::ranges::stable_sort(entries, [side](const IconEntry &one, const IconEntry &other) {
        return isBetter(one.width, other.width, side);
    });
    return entries;
}

/// Whether the reader of icons can count the colours that a bitmap says it has. It refuses too many
/// itself, but treats counts above the range of `int` as zero, and then fills only some of the
/// image.
bool hasCountableColors(const QByteArray &bitmap)
{
    constexpr qsizetype CountPlace = 32;
    constexpr quint32 MostColors = std::numeric_limits<int>::max();
    return numberAt(bitmap, CountPlace) <= MostColors;
}

/// The height counts the mask as well.
bool isSmallInIcon(const QByteArray &bitmap)
{
    return isSmall(numberAt(bitmap, 4), numberAt(bitmap, 8) / 2);
}

/// Reads the bitmap as the only image of an icon: in its own icon, the reader would take what
/// follows a truncated bitmap for its pixels.
QImage readBitmapInIcon(const QByteArray &bitmap, const IconEntry &entry)
{
    constexpr QByteArrayView HeaderOfOne("\0\0\1\0\1\0", 6);
    constexpr QByteArrayView Place("\x16\0\0\0", 4); // behind the header and the only entry
    QBuffer buffer;
    buffer.setData(HeaderOfOne.toByteArray() + entry.description + Place.toByteArray() + bitmap);
    QImageReader reader(&buffer, "ico");
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

QImage readEntry(const QByteArray &icon, const IconEntry &entry)
{
    const auto picture = icon.mid(entry.place, entry.length);
    if (PngImage::isPng(picture))
        return readPlain(picture);
    const bool isReadable =
        !picture.isEmpty() && isSmallInIcon(picture) && hasCountableColors(picture);
    return isReadable ? readBitmapInIcon(picture, entry) : QImage();
}

QImage readIcon(const QByteArray &bytes, int side)
{
    constexpr std::size_t MostAttempts = 32; // icons have about ten images
    auto entries = entriesOf(bytes, side);
    entries.resize(std::min(entries.size(), MostAttempts));
    for (const auto &entry : entries)
        if (auto image = readEntry(bytes, entry); !image.isNull())
            return image;
    return {};
}

} // namespace

QImage read(const QByteArray &bytes, int side)
{
    static std::once_flag silenced;
    std::call_once(silenced, &silenceReaders);
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader icon(&buffer, "ico");
    icon.setAutoDetectImageFormat(false);
    return icon.canRead() ? readIcon(bytes, side) : readPlain(bytes);
}

} // namespace RasterImage
