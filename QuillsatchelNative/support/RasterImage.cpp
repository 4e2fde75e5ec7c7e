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

constexpr qint64 MaximumPixels = qint64(2048) * 2048;
constexpr qsizetype MaximumScans = 100; // ordinary images have about ten

/// Qt's name of the format, empty for other formats. Qt's own detection would also accept SVG,
/// which can take unlimited time and refer to other files.
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

/// Each scan of a progressive JPEG decodes all its pixels again and can take only a few bytes.
bool hasTooManyScans(const QByteArray &bytes)
{
    return bytes.count("\xFF\xDA") > MaximumScans;
}

/// Affects the entire process: broken images are not worth log lines.
void silenceReaders()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
}

/// A little-endian number; 0 past the end.
quint32 numberAt(const QByteArray &bytes, qsizetype offset)
{
    constexpr qsizetype Size = sizeof(quint32);
    const auto number = bytes.mid(offset, Size);
    return number.size() == Size ? qFromLittleEndian<quint32>(number.constData()) : 0;
}

bool isSmall(qint64 width, qint64 height)
{
    return width > 0 && width <= MaximumPixels && height <= MaximumPixels &&
           width * height <= MaximumPixels;
}

/// Tests the canvas size, which Qt's reader allocates although it reports that of the first frame.
bool isSmallGif(const QByteArray &gif)
{
    const auto size = numberAt(gif, 6);
    return isSmall(size & 0xFFFF, size >> 16);
}

/// QImageReader's own limit would affect the entire process, and application icons may be larger.
QImage readSmall(QImageReader &reader)
{
    const auto size = reader.size();
    const auto height = std::abs(qint64(size.height())); // negative in a bitmap stored upside down
    return isSmall(size.width(), height) ? reader.read() : QImage();
}

bool isRunLengthEncoded(const QByteArray &bitmap)
{
    constexpr quint32 CoreHeaderSize = 12; // of the oldest header, which has no compression field
    constexpr quint32 Rle8 = 1;
    constexpr quint32 Rle4 = 2;
    const auto headerSize = numberAt(bitmap, 14);
    const auto compression = numberAt(bitmap, 30);
    return headerSize != CoreHeaderSize && (compression == Rle8 || compression == Rle4);
}

/// Rejects bitmaps that omit pixels, because Qt's reader leaves those uninitialised.
QImage readBitmap(const QByteArray &bytes)
{
    if (isRunLengthEncoded(bytes))
        return {};
    WatchedBuffer buffer(bytes);
    QImageReader reader(&buffer, "bmp");
    reader.setAutoDetectImageFormat(false);
    QImage image = readSmall(reader);
    return buffer.wasEnough() ? image : QImage();
}

QImage readSingle(const QByteArray &bytes)
{
    if (PngImage::isPng(bytes))
        return PngImage::read(bytes, MaximumPixels);
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

/// An entry in the directory of an icon.
struct IconEntry {
    QByteArray description; ///< the entry without `offset`
    int width;
    quint32 length;
    quint32 offset;
};

/// None past the end of the bytes.
std::optional<IconEntry> iconEntry(const QByteArray &icon, int number)
{
    constexpr qsizetype HeaderSize = 6;
    constexpr qsizetype EntrySize = 16;
    constexpr qsizetype LengthOffset = 8;
    constexpr qsizetype DescriptionSize = 12; // followed by the offset
    const auto entry = icon.mid(HeaderSize + EntrySize * number, EntrySize);
    if (entry.size() < EntrySize)
        return std::nullopt;
    const auto width = static_cast<unsigned char>(entry.front());
    return IconEntry { .description = entry.first(DescriptionSize),
                       .width = width == 0 ? 256 : width,
                       .length = numberAt(entry, LengthOffset),
                       .offset = numberAt(entry, DescriptionSize) };
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
    constexpr qsizetype CountOffset = 4;
    const int count = qFromLittleEndian<quint16>(icon.constData() + CountOffset);
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

/// Qt's icon reader rejects too many colours, but treats counts above the range of `int` as zero
/// and then leaves pixels uninitialised.
bool hasValidColorCount(const QByteArray &bitmap)
{
    constexpr qsizetype CountOffset = 32;
    constexpr quint32 MaximumColors = std::numeric_limits<int>::max();
    return numberAt(bitmap, CountOffset) <= MaximumColors;
}

/// The header's height includes that of the mask.
bool isSmallInIcon(const QByteArray &bitmap)
{
    return isSmall(numberAt(bitmap, 4), numberAt(bitmap, 8) / 2);
}

/// Reads the bitmap as the only image of an icon. In the original icon, the reader would take the
/// bytes after a truncated bitmap for its pixels.
QImage readBitmapInIcon(const QByteArray &bitmap, const IconEntry &entry)
{
    constexpr QByteArrayView HeaderOfOne("\0\0\1\0\1\0", 6);
    constexpr QByteArrayView Offset("\x16\0\0\0", 4); // after the header and the only entry
    QBuffer buffer;
    buffer.setData(HeaderOfOne.toByteArray() + entry.description + Offset.toByteArray() + bitmap);
    QImageReader reader(&buffer, "ico");
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

QImage readEntry(const QByteArray &icon, const IconEntry &entry)
{
    const auto image = icon.mid(entry.offset, entry.length);
    if (PngImage::isPng(image))
        return readSingle(image);
    const bool isReadable = !image.isEmpty() && isSmallInIcon(image) && hasValidColorCount(image);
    return isReadable ? readBitmapInIcon(image, entry) : QImage();
}

QImage readIcon(const QByteArray &bytes, int side)
{
    constexpr std::size_t MaximumAttempts = 32; // ordinary icons have about ten images
    auto entries = entriesOf(bytes, side);
    entries.resize(std::min(entries.size(), MaximumAttempts));
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
    return icon.canRead() ? readIcon(bytes, side) : readSingle(bytes);
}

} // namespace RasterImage
