#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QImageWriter>
#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

/// Encoded images, both valid and malicious ones.
namespace PictureBytes
{

inline QImage filled(int width, int height, const QColor &color = Qt::red)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

inline QByteArray encoded(const QImage &image, const char *format, bool isProgressive = false)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image) ? buffer.data() : QByteArray();
}

inline QByteArray png(int width, int height, const QColor &color = Qt::red)
{
    return encoded(filled(width, height, color), "png");
}

template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Number>
QByteArray bigEndian(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The CRC-32 of a PNG chunk.
inline quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = ~quint32();
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) * 0xEDB88320);
    }
    return ~sum;
}

inline QByteArray pngChunk(const QByteArray &type, const QByteArray &data)
{
    return bigEndian(static_cast<quint32>(data.size())) + type + data +
           bigEndian(checksum(type + data));
}

inline constexpr qsizetype PngHeaderEnd = 33; ///< where other chunks can follow

/// A PNG that declares this size but contains almost no pixel data.
inline QByteArray emptyPng(quint32 width, quint32 height)
{
    return png(1, 1).first(8) +
           pngChunk("IHDR",
                    bigEndian(width) + bigEndian(height) + QByteArray("\x08\x06\0\0\0", 5)) +
           pngChunk("IDAT", qCompress(QByteArray(100, '\0')).mid(4)) + pngChunk("IEND", {});
}

/// The JPEG with a different size in its header.
inline QByteArray resizedJpeg(QByteArray jpeg, quint16 width, quint16 height)
{
    const auto baseline = jpeg.indexOf("\xFF\xC0");
    const auto frame = baseline < 0 ? jpeg.indexOf("\xFF\xC2") : baseline;
    return jpeg.replace(frame + 5, 4, bigEndian(height) + bigEndian(width));
}

/// A GIF with one frame, which contains one white pixel.
inline QByteArray gif(quint16 width, quint16 height, quint16 frameWidth = 1,
                      quint16 frameHeight = 1)
{
    return "GIF89a" + littleEndian(width) + littleEndian(height) + QByteArray("\x80\0\0", 3) +
           QByteArray("\xFF\xFF\xFF\0\0\0", 6) + ',' + QByteArray(4, '\0') +
           littleEndian(frameWidth) + littleEndian(frameHeight) + QByteArray("\0\2\2\x44\1\0", 6) +
           ';';
}

/// The header of a bitmap (BITMAPINFOHEADER).
inline QByteArray bitmapHeader(qint32 width, qint32 height, quint16 bitsPerPixel)
{
    return littleEndian(quint32(40)) + littleEndian(width) + littleEndian(height) +
           littleEndian(quint16(1)) + littleEndian(bitsPerPixel) + QByteArray(24, '\0');
}

inline QByteArray bmp(qint32 width, qint32 height, const QByteArray &pixels,
                      quint16 bitsPerPixel = 24)
{
    return "BM" + littleEndian(static_cast<quint32>(54 + pixels.size())) + QByteArray(4, '\0') +
           littleEndian(quint32(54)) + bitmapHeader(width, height, bitsPerPixel) + pixels;
}

/// A bitmap in the format used inside icons: without a file header, followed by a mask, and with
/// twice the visible height in its header.
inline QByteArray iconBitmap(int side, const QColor &color)
{
    QByteArray pixels;
    for (int pixel = 0; pixel < side * side; ++pixel)
        pixels += littleEndian(color.rgba());
    const qsizetype maskSize = qsizetype((side + 31) / 32) * 4 * side;
    return bitmapHeader(side, 2 * side, 32) + pixels + QByteArray(maskSize, '\0');
}

/// One image of an icon file: its size in the directory, and its bytes.
struct IconPicture {
    int side; ///< 256 is written as 0
    QByteArray bytes;
};

inline QByteArray icon(const std::vector<IconPicture> &pictures)
{
    const auto count = static_cast<quint16>(pictures.size());
    QByteArray directory =
        littleEndian(quint16(0)) + littleEndian(quint16(1)) + littleEndian(count);
    QByteArray body;
    for (const auto &picture : pictures) {
        const auto offset =
            static_cast<quint32>(6 + 16 * pictures.size()) + static_cast<quint32>(body.size());
        directory += QByteArray(2, static_cast<char>(picture.side)) + QByteArray(2, '\0') +
                     littleEndian(quint16(1)) + littleEndian(quint16(32)) +
                     littleEndian(static_cast<quint32>(picture.bytes.size())) +
                     littleEndian(offset);
        body += picture.bytes;
    }
    return directory + body;
}

} // namespace PictureBytes
