#include "support/PngImage.h"

#include <QtEndian>

#include <cstddef>
#include <png.h>
#include <utility>

namespace PngImage
{

namespace
{

constexpr QByteArrayView Signature("\x89PNG\r\n\x1A\n");

/// Owns libpng's state between reading the header and reading the pixels.
class PngReader
{
public:
    explicit PngReader(QByteArray png)
        : m_png(std::move(png))
    {
        m_image.version = PNG_IMAGE_VERSION;
        m_isOpen = png_image_begin_read_from_memory(&m_image, m_png.constData(),
                                                    static_cast<std::size_t>(m_png.size())) != 0;
        m_image.format = PNG_FORMAT_RGBA;
        m_image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB; // linear 16-bit images are marked as such
    }

    PngReader(const PngReader &) = delete;
    PngReader &operator=(const PngReader &) = delete;

    ~PngReader() { png_image_free(&m_image); }

    bool hasAtMost(qint64 pixels) const
    {
        return m_isOpen && qint64(m_image.height) <= pixels / qint64(m_image.width);
    }

    QImage read()
    {
        QImage image(static_cast<int>(m_image.width), static_cast<int>(m_image.height),
                     QImage::Format_RGBA8888);
        const auto stride = static_cast<png_int_32>(image.bytesPerLine());
        if (image.isNull() ||
            png_image_finish_read(&m_image, nullptr, image.bits(), stride, nullptr) == 0)
            return {};
        return image;
    }

private:
    QByteArray m_png; // read by libpng until destruction
    png_image m_image {};
    bool m_isOpen = false;
};

bool isCompressedText(const QByteArray &chunk)
{
    const auto type = chunk.mid(4, 4);
    return type == "zTXt" || type == "iTXt";
}

/// libpng decompresses all text chunks, and a few kilobytes can decompress to gigabytes.
QByteArray withoutCompressedTexts(const QByteArray &png)
{
    constexpr qsizetype FrameSize = 12; // length, type and checksum
    QByteArray result = png.first(Signature.size());
    result.reserve(png.size());
    qsizetype offset = Signature.size();
    while (png.size() - offset >= FrameSize) {
        const auto length = qFromBigEndian<quint32>(png.constData() + offset);
        const auto chunk = png.mid(offset, FrameSize + qsizetype(length));
        if (!isCompressedText(chunk))
            result += chunk;
        offset += chunk.size();
    }
    return result;
}

} // namespace

bool isPng(const QByteArray &bytes)
{
    return bytes.startsWith(Signature);
}

QImage read(const QByteArray &bytes, qint64 maximumPixels)
{
    if (!isPng(bytes))
        return {};
    PngReader reader(withoutCompressedTexts(bytes));
    return reader.hasAtMost(maximumPixels) ? reader.read() : QImage();
}

} // namespace PngImage
