#include "support/RasterImage.h"

#include "support/WatchedBuffer.h"

#include <QBuffer>
#include <QByteArrayList>
#include <QImageReader>
#include <QLoggingCategory>
#include <QtEndian>

#include <limits>
#include <mutex>
#include <optional>

namespace RasterImage
{

namespace
{

constexpr int LargestImage = 16;     // mebibytes
constexpr qsizetype MostScans = 100; // pictures meant to be seen have about ten

// Drawings (SVG) are left out: they can take any time, and name other files.
bool isKnown(const QByteArray &format)
{
    static const QByteArrayList Formats { "png", "gif", "jpeg", "webp" };
    return Formats.contains(format);
}

/// Whether it is a JPEG that goes over its points again and again: a few bytes are enough to ask
/// for that.
bool isTiring(const QByteArray &bytes, const QByteArray &format)
{
    return format == "jpeg" && bytes.count("\xFF\xDA") > MostScans;
}

bool isPng(const QByteArray &bytes)
{
    return bytes.startsWith("\x89PNG\r\n\x1A\n");
}

bool mayBePackedText(const QByteArray &chunk)
{
    const auto type = chunk.mid(4, 4);
    return type == "zTXt" || type == "iTXt";
}

/// The PNG without what is written beside the picture: readers unpack all of it, and a few
/// kilobytes can be packed so as to fill any memory.
QByteArray withoutPackedTexts(const QByteArray &png)
{
    constexpr qsizetype SignatureSize = 8;
    constexpr qsizetype FrameSize = 12; // length, type and checksum
    QByteArray lean = png.first(SignatureSize);
    lean.reserve(png.size());
    qsizetype place = SignatureSize;
    while (png.size() - place >= FrameSize) {
        const auto length = qFromBigEndian<quint32>(png.constData() + place);
        const auto chunk = png.mid(place, FrameSize + qsizetype(length));
        if (!mayBePackedText(chunk))
            lean += chunk;
        place += chunk.size();
    }
    return lean;
}

/// For the whole process. That a picture is broken is no news for whoever reads our log.
void prepareReaders()
{
    QImageReader::setAllocationLimit(LargestImage);
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
}

/// As bitmaps and icons write it. Zero where the bytes end before it.
quint32 numberAt(const QByteArray &bytes, qsizetype place)
{
    constexpr qsizetype Size = sizeof(quint32);
    const auto number = bytes.mid(place, Size);
    return number.size() == Size ? qFromLittleEndian<quint32>(number.constData()) : 0;
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
    QImage image = reader.read();
    return buffer.wasEnough() ? image : QImage();
}

QImage readPlain(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(isPng(bytes) ? withoutPackedTexts(bytes) : bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    if (format == "bmp")
        return readBitmap(bytes);
    return isKnown(format) && !isTiring(bytes, format) ? reader.read() : QImage();
}

/// What an icon's directory says of one of its pictures.
struct IconEntry {
    int number;
    int width;
    quint32 length;
    quint32 place;
};

/// None where the bytes end before it.
std::optional<IconEntry> iconEntry(const QByteArray &icon, int number)
{
    constexpr qsizetype HeaderSize = 6;
    constexpr qsizetype EntrySize = 16;
    const auto entry = icon.mid(HeaderSize + EntrySize * number, EntrySize);
    if (entry.size() < EntrySize)
        return std::nullopt;
    const auto width = static_cast<unsigned char>(entry.front());
    return IconEntry { .number = number,
                       .width = width == 0 ? 256 : width,
                       .length = numberAt(entry, 8),
                       .place = numberAt(entry, 12) };
}

bool isBetter(int width, int than, int side)
{
    const bool isEnough = width >= side;
    if (isEnough != (than >= side))
        return isEnough;
    return isEnough ? width < than : width > than;
}

std::optional<IconEntry> bestEntry(const QByteArray &icon, int side)
{
    constexpr qsizetype CountPlace = 4;
    const int count = qFromLittleEndian<quint16>(icon.constData() + CountPlace);
    std::optional<IconEntry> best;
    for (int number = 0; number < count; ++number) {
        const auto entry = iconEntry(icon, number);
        if (!entry)
            break;
        if (!best || isBetter(entry->width, best->width, side))
            best = entry;
    }
    return best;
}

/// Whether the reader of icons can count the colours that a bitmap says it has. It refuses too many
/// itself, but takes what is no `int` for none, and then fills only some of the picture.
bool hasCountableColors(const QByteArray &icon, const IconEntry &entry)
{
    constexpr qsizetype CountPlace = 32;
    constexpr quint32 MostColors = std::numeric_limits<int>::max();
    return numberAt(icon, CountPlace + entry.place) <= MostColors;
}

QImage readIcon(QImageReader &reader, const QByteArray &bytes, int side)
{
    const auto entry = bestEntry(bytes, side);
    if (!entry)
        return {};
    const auto picture = bytes.mid(entry->place, entry->length);
    if (isPng(picture))
        return readPlain(picture);
    if (picture.isEmpty() || !hasCountableColors(bytes, *entry))
        return {};
    return reader.jumpToImage(entry->number) ? reader.read() : QImage();
}

} // namespace

QImage read(const QByteArray &bytes, int side)
{
    static std::once_flag prepared;
    std::call_once(prepared, &prepareReaders);
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader icon(&buffer, "ico");
    icon.setAutoDetectImageFormat(false);
    return icon.canRead() ? readIcon(icon, bytes, side) : readPlain(bytes);
}

} // namespace RasterImage
