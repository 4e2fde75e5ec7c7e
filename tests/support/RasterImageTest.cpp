#include "support/RasterImage.h"

#include "fakes/PictureBytes.h"
#include "fakes/TestFiles.h"

#include <QColor>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace std::chrono_literals;

constexpr int AnySide = 16;

struct NamedBytes {
    const char *name;
    QByteArray bytes;
};

QImage read(const QByteArray &bytes, int side = AnySide)
{
    return RasterImage::read(bytes, side);
}

/// The peak resident memory of this process, in MiB.
long peakMemory()
{
    const auto status = TestFiles::read("/proc/self/status");
    return std::stol(status.substr(status.find("VmHWM:") + 6)) / 1024;
}

/// Whether decoding needs little more memory than the largest image.
bool needsLittleMemory(const QByteArray &bytes)
{
    const long before = peakMemory();
    RasterImage::read(bytes, AnySide);
    return peakMemory() - before < 100;
}

/// A red image in every format; the GIF is white.
std::vector<NamedBytes> everyFormat()
{
    const QImage image = PictureBytes::filled(16, 16);
    return {
        { "PNG", PictureBytes::encoded(image, "png") },
        { "JPEG", PictureBytes::encoded(image, "jpeg") },
        { "GIF", PictureBytes::gif(16, 16) },
        { "BMP", PictureBytes::encoded(image, "bmp") },
        { "ICO with a PNG", PictureBytes::icon({ { 16, PictureBytes::png(16, 16) } }) },
        { "ICO with a bitmap",
          PictureBytes::icon({ { 16, PictureBytes::iconBitmap(16, Qt::red) } }) },
        { "WebP", PictureBytes::encoded(image, "webp") },
    };
}

TEST(RasterImageTest, RecognisesEveryFormatByContent)
{
    for (const auto &[name, bytes] : everyFormat()) {
        const auto image = read(bytes);
        EXPECT_EQ(image.size(), QSize(16, 16)) << name;
        const auto expected = bytes.startsWith("GIF") ? QColor(Qt::white) : QColor(Qt::red);
        const auto color = image.pixelColor(0, 0);
        EXPECT_NEAR(color.red(), expected.red(), 2) << name;
        EXPECT_NEAR(color.green(), expected.green(), 2) << name;
        EXPECT_NEAR(color.blue(), expected.blue(), 2) << name;
    }
}

TEST(RasterImageTest, RejectsBytesThatAreNotImages)
{
    const std::vector<NamedBytes> texts {
        { "nothing", "" },
        { "a null", {} },
        { "a zero byte", QByteArray(1, '\0') },
        { "zeros", QByteArray(10'000, '\0') },
        { "text", "Not found\n" },
        { "HTML", "<!DOCTYPE html><html><body><img src=\"favicon.ico\"></body></html>" },
        { "JSON", "{}" },
        { "text that begins as a GIF does", "GIF not found" },
    };
    for (const auto &[name, bytes] : texts)
        EXPECT_TRUE(read(bytes).isNull()) << name;
}

TEST(RasterImageTest, RejectsOtherFormats)
{
    const QByteArray svg = R"(<svg xmlns="http://www.w3.org/2000/svg" width="6" height="4">)"
                           R"(<rect width="6" height="4"/></svg>)";
    const std::vector<NamedBytes> images {
        { "SVG", svg },
        { "SVG with a declaration", R"(<?xml version="1.0"?>)" + svg },
        { "XPM", PictureBytes::encoded(PictureBytes::filled(6, 4), "xpm") },
        { "XBM", PictureBytes::encoded(PictureBytes::filled(6, 4), "xbm") },
        { "PPM", PictureBytes::encoded(PictureBytes::filled(6, 4), "ppm") },
    };
    for (const auto &[name, bytes] : images) {
        ASSERT_FALSE(bytes.isEmpty()) << name;
        EXPECT_TRUE(read(bytes).isNull()) << name;
    }
}

TEST(RasterImageTest, RejectsImagesTruncatedBeforeTheirPixels)
{
    constexpr qsizetype ShortestHeader = 22;
    for (const auto &[name, bytes] : everyFormat()) {
        const QSize size = read(bytes).size();
        for (qsizetype length = 0; length < bytes.size(); ++length) {
            const auto image = read(bytes.first(length));
            EXPECT_TRUE(image.isNull() || (length >= ShortestHeader && image.size() == size))
                << name << " cut at " << length;
        }
    }
}

TEST(RasterImageTest, RejectsPngsWithoutAllPixels)
{
    const auto png = everyFormat().front().bytes;
    const auto pixelsEnd = png.indexOf("IEND") - 8;
    for (qsizetype length = 0; length < pixelsEnd; ++length)
        EXPECT_TRUE(read(png.first(length)).isNull()) << "cut at " << length;
}

/// Bitmaps of every depth, with exactly the required pixels.
std::vector<NamedBytes> bitmapsOfEveryDepth()
{
    const QImage image = PictureBytes::filled(5, 3);
    return {
        { "1 bit", PictureBytes::encoded(image.convertToFormat(QImage::Format_Mono), "bmp") },
        { "4 bits", PictureBytes::encoded(image.convertToFormat(QImage::Format_Indexed8), "bmp") },
        { "8 bits",
          PictureBytes::bmp(5, 3, QByteArray(256 * 4, '\x40') + QByteArray(8 * 3, 1), 8) },
        { "16 bits", PictureBytes::bmp(5, 3, QByteArray(12 * 3, '\x40'), 16) },
        { "24 bits", PictureBytes::encoded(image, "bmp") },
        { "32 bits", PictureBytes::bmp(5, 3, QByteArray(20 * 3, '\x40'), 32) },
        { "upside down", PictureBytes::bmp(5, -3, QByteArray(16 * 3, '\x40'), 24) },
    };
}

TEST(RasterImageTest, RejectsBitmapsWithoutAllPixels)
{
    for (const auto &[name, bytes] : bitmapsOfEveryDepth()) {
        EXPECT_EQ(read(bytes).size(), QSize(5, 3)) << name;
        for (qsizetype length = 0; length < bytes.size(); ++length)
            EXPECT_TRUE(read(bytes.first(length)).isNull()) << name << " cut at " << length;
    }
}

TEST(RasterImageTest, RejectsBitmapsWithAWrongPixelOffset)
{
    constexpr qsizetype PixelOffsetPosition = 10;
    auto bitmap = PictureBytes::bmp(5, 3, QByteArray(16 * 3, '\x40'));
    ASSERT_FALSE(read(bitmap).isNull());
    for (const quint32 position : { 55U, 1000U, 0x7F000000U }) {
        bitmap.replace(PixelOffsetPosition, 4, PictureBytes::littleEndian(position));
        EXPECT_TRUE(read(bitmap).isNull()) << position;
    }
}

TEST(RasterImageTest, RejectsRunLengthEncodedBitmaps)
{
    constexpr qsizetype CompressionPosition = 30;
    const QByteArray palette(256 * 4, '\x40');
    const QByteArray endOfBitmap("\0\1", 2);
    for (const auto &[bits, compression] : { std::pair<quint16, char> { 8, 1 }, { 4, 2 } }) {
        auto bitmap = PictureBytes::bmp(5, 3, palette + endOfBitmap + QByteArray(100, '\0'), bits);
        ASSERT_FALSE(read(bitmap).isNull()) << bits;
        bitmap[CompressionPosition] = compression;
        EXPECT_TRUE(read(bitmap).isNull()) << bits;
    }
}

TEST(RasterImageTest, IgnoresBytesAfterAnImage)
{
    for (const auto &[name, bytes] : everyFormat())
        EXPECT_EQ(read(bytes + "and more"), read(bytes)) << name;
}

TEST(RasterImageTest, SurvivesChangedBytes)
{
    for (const auto &[name, bytes] : everyFormat()) {
        for (qsizetype position = 0; position < bytes.size(); ++position) {
            for (const char byte : { '\0', '\x7F', '\xFF' }) {
                auto changed = bytes;
                changed[position] = byte;
                const auto image = read(changed);
                EXPECT_LE(image.sizeInBytes(), 16 * 1024 * 1024) << name << " at " << position;
            }
        }
    }
}

TEST(RasterImageTest, LogsNothingAboutBrokenImages)
{
    static int messages = 0;
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &) { ++messages; });
    const QImage image = PictureBytes::filled(16, 16);
    auto png = PictureBytes::encoded(image, "png");
    const auto resolution = png.indexOf("pHYs");
    const auto jpeg = PictureBytes::encoded(image, "jpeg");
    ASSERT_GE(resolution, 0);
    png[resolution + 4] = '\x7F'; // contradicts the checksum
    read(png);
    read(jpeg.first(jpeg.size() / 2));
    read(PictureBytes::png(3000, 3000));
    auto bitmap = PictureBytes::encoded(image, "bmp");
    bitmap[12] = 1; // the pixels are past the end
    read(bitmap);
    qInstallMessageHandler(previous);
    EXPECT_EQ(messages, 0);
}

/// Changes the byte after the name of a chunk.
QByteArray damaged(QByteArray png, const QByteArray &chunk)
{
    const auto position = png.indexOf(chunk) + 4;
    png[position] = static_cast<char>(~png[position]);
    return png;
}

TEST(RasterImageTest, WritesNothingToStderrAboutABrokenPng)
{
    const auto png = PictureBytes::png(16, 16);
    testing::internal::CaptureStderr();
    for (const auto &bytes :
         { damaged(png, "IHDR"), damaged(png, "IDAT"), damaged(png, "pHYs"),
           png.first(png.indexOf("IDAT") + 10), png.first(20), PictureBytes::emptyPng(16, 16) }) {
        read(bytes);
        read(PictureBytes::icon({ { 16, bytes } }));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RasterImageTest, ReadsPngsOfEveryDepth)
{
    for (const auto format :
         { QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_RGBX64,
           QImage::Format_RGBA64, QImage::Format_Grayscale8, QImage::Format_Grayscale16,
           QImage::Format_Indexed8, QImage::Format_Mono }) {
        const auto gray = PictureBytes::filled(6, 4, Qt::darkGray);
        const auto image = gray.convertToFormat(format, Qt::ThresholdDither);
        const auto result = read(PictureBytes::encoded(image, "png"));
        ASSERT_EQ(result.size(), QSize(6, 4)) << format;
        EXPECT_EQ(result.pixel(1, 1), image.pixel(1, 1)) << format;
    }
}

TEST(RasterImageTest, AppliesTheOrientationOfPhotos)
{
    // Exif orientation 6: rotated by 90 degrees clockwise.
    const QByteArray orientation(
        "Exif\0\0MM\0\x2A\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0", 32);
    auto jpeg = PictureBytes::encoded(PictureBytes::filled(6, 4), "jpeg");
    jpeg.insert(2, "\xFF\xE1" + PictureBytes::bigEndian(quint16(orientation.size() + 2)) +
                       orientation);
    EXPECT_EQ(read(jpeg).size(), QSize(4, 6));
}

TEST(RasterImageTest, ChoosesTheSmallestSufficientImageOfAnIcon)
{
    const auto icon = PictureBytes::icon({
        { 32, PictureBytes::png(32, 32) },
        { 16, PictureBytes::iconBitmap(16, Qt::red) },
        { 256, PictureBytes::png(256, 256) },
        { 48, PictureBytes::iconBitmap(48, Qt::red) },
    });

    struct Row {
        int side;
        int width;
    };

    for (const auto row : { Row { 1, 16 }, Row { 16, 16 }, Row { 17, 32 }, Row { 32, 32 },
                            Row { 33, 48 }, Row { 48, 48 }, Row { 49, 256 }, Row { 256, 256 } })
        EXPECT_EQ(read(icon, row.side).size(), QSize(row.width, row.width)) << row.side;
}

TEST(RasterImageTest, ChoosesTheWidestImageOfASmallIcon)
{
    const auto icon = PictureBytes::icon({ { 16, PictureBytes::png(16, 16) },
                                           { 48, PictureBytes::png(48, 48) },
                                           { 32, PictureBytes::png(32, 32) } });
    EXPECT_EQ(read(icon, 49).width(), 48);
    EXPECT_EQ(read(icon, 1'000'000).width(), 48);
}

TEST(RasterImageTest, ChoosesTheFirstImageOfASize)
{
    const auto icon = PictureBytes::icon({ { 64, PictureBytes::png(64, 64, Qt::green) },
                                           { 16, PictureBytes::png(16, 16, Qt::blue) },
                                           { 16, PictureBytes::png(16, 16, Qt::green) } });
    EXPECT_EQ(read(icon, 16).pixelColor(0, 0), QColor(Qt::blue));
}

TEST(RasterImageTest, SkipsImagesOfAnIconThatCannotBeDecoded)
{
    const auto broken = PictureBytes::png(16, 16).first(60);
    const auto icon = PictureBytes::icon({ { 16, broken },
                                           { 32, PictureBytes::bitmapHeader(32, 64, 32) },
                                           { 64, PictureBytes::png(64, 64) },
                                           { 48, PictureBytes::iconBitmap(48, Qt::green) } });
    EXPECT_EQ(read(icon, 16).pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(read(icon, 49).width(), 64);
    EXPECT_TRUE(read(PictureBytes::icon({ { 16, broken }, { 32, broken } })).isNull());
}

TEST(RasterImageTest, RejectsIconsWithAWrongDirectory)
{
    const auto good = PictureBytes::icon({ { 16, PictureBytes::png(16, 16) } });
    const auto withEntry = [&good](qsizetype position, quint32 number) {
        return QByteArray(good).replace(position, 4, PictureBytes::littleEndian(number));
    };
    constexpr qsizetype LengthPosition = 14;
    constexpr qsizetype OffsetPosition = 18;
    ASSERT_FALSE(read(good).isNull());
    const auto tooManyColors =
        PictureBytes::bitmapHeader(16, 32, 4).replace(32, 4, "\xFF\xFF\xFF\xFF") +
        QByteArray(1000, '\1');
    const std::vector<NamedBytes> icons {
        { "no images", PictureBytes::icon({}) },
        { "a truncated directory", good.first(20) },
        { "an empty image", withEntry(LengthPosition, 0) },
        { "half an image", withEntry(LengthPosition, 40) },
        { "past the end", withEntry(OffsetPosition, 10'000) },
        { "far past the end", withEntry(OffsetPosition, 0xFFFFFFFF) },
        { "the icon itself", withEntry(OffsetPosition, 0) },
        { "an icon in an icon", PictureBytes::icon({ { 16, good } }) },
        { "a GIF", PictureBytes::icon({ { 16, PictureBytes::gif(16, 16) } }) },
        { "a bitmap with too many colours", PictureBytes::icon({ { 16, tooManyColors } }) },
        { "a bitmap without pixels",
          PictureBytes::icon({ { 16, PictureBytes::bitmapHeader(16, 32, 32) } }) },
    };
    for (const auto &[name, bytes] : icons)
        EXPECT_TRUE(read(bytes).isNull()) << name;
}

TEST(RasterImageTest, ReadsIconsWithALargeColorCount)
{
    const auto bitmap = PictureBytes::iconBitmap(16, Qt::red)
                            .replace(32, 4, PictureBytes::littleEndian(quint32(1) << 24));
    EXPECT_EQ(read(PictureBytes::icon({ { 16, bitmap } })).pixelColor(0, 0), QColor(Qt::red));
}

TEST(RasterImageTest, ReadsAnIconOfManyImagesQuickly)
{
    const std::vector<PictureBytes::IconPicture> images(
        0xFFFF, { 16, PictureBytes::bitmapHeader(16, 32, 32).first(1) });
    const auto start = std::chrono::steady_clock::now();
    read(PictureBytes::icon(images));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

TEST(RasterImageTest, RejectsImagesLargerThan2048PixelsSquare)
{
    EXPECT_EQ(read(PictureBytes::png(2048, 2048)).size(), QSize(2048, 2048));
    EXPECT_EQ(read(PictureBytes::gif(2048, 2048)).size(), QSize(2048, 2048));
    EXPECT_EQ(read(PictureBytes::png(4096, 1024)).size(), QSize(4096, 1024));
    EXPECT_TRUE(read(PictureBytes::png(2049, 2048)).isNull());
    EXPECT_TRUE(read(PictureBytes::gif(2049, 2048)).isNull());
    EXPECT_TRUE(read(PictureBytes::icon({ { 16, PictureBytes::png(2049, 2048) } })).isNull());
    EXPECT_TRUE(read(PictureBytes::encoded(PictureBytes::filled(2049, 2048), "jpeg")).isNull());
    EXPECT_TRUE(read(PictureBytes::encoded(PictureBytes::filled(2049, 2048), "bmp")).isNull());
}

TEST(RasterImageTest, AllocatesLittleForSmallFilesThatClaimToBeHuge)
{
    const QImage image = PictureBytes::filled(16, 16);
    const auto jpeg = PictureBytes::encoded(image, "jpeg");
    const auto progressive = PictureBytes::encoded(image, "jpeg", true);
    const auto iconOf = [](const QByteArray &bytes, int side = 16) {
        return PictureBytes::icon({ { side, bytes } });
    };
    const std::vector<NamedBytes> images {
        { "PNG", PictureBytes::emptyPng(60'000, 60'000) },
        { "PNG of the maximum size", PictureBytes::emptyPng(0x7FFFFFFF, 0x7FFFFFFF) },
        { "JPEG", PictureBytes::resizedJpeg(jpeg, 65'500, 65'500) },
        { "progressive JPEG", PictureBytes::resizedJpeg(progressive, 65'500, 65'500) },
        { "GIF", PictureBytes::gif(65'535, 65'535) },
        { "GIF with a huge frame", PictureBytes::gif(65'535, 65'535, 65'535, 65'535) },
        { "wide BMP", PictureBytes::bmp(60'000, 60'000, "abcd") },
        { "high BMP", PictureBytes::bmp(16, 0x7FFFFFF0, "abcd") },
        { "high BMP upside down", PictureBytes::bmp(16, -0x7FFFFFF0, "abcd") },
        { "BMP of one colour", PictureBytes::bmp(500'000, 500'000, "abcd", 1) },
        { "PNG in an icon", iconOf(PictureBytes::emptyPng(60'000, 60'000)) },
        { "bitmap in an icon", iconOf(PictureBytes::bitmapHeader(60'000, 120'000, 32) + "abcd") },
        { "bitmap in a large icon",
          iconOf(PictureBytes::bitmapHeader(60'000, 120'000, 32) + "abcd", 0) },
        { "bitmap of one colour in an icon",
          iconOf(PictureBytes::bitmapHeader(500'000, 1'000'000, 1) + "abcd") },
    };
    for (const auto &[name, bytes] : images) {
        EXPECT_LT(bytes.size(), 1000) << name;
        EXPECT_TRUE(needsLittleMemory(bytes)) << name;
        EXPECT_TRUE(read(bytes).isNull()) << name;
    }
}

TEST(RasterImageTest, AllocatesLittleForAFrameLargerThanItsCanvas)
{
    const auto gif = PictureBytes::gif(1, 1, 65'535, 65'535);
    EXPECT_TRUE(needsLittleMemory(gif));
    EXPECT_EQ(read(gif).size(), QSize(1, 1));
}

TEST(RasterImageTest, DoesNotDecompressTextsInImages)
{
    const auto compressed = qCompress(QByteArray(7'900'000, 'a'), 9).mid(4);
    const std::vector<std::pair<QByteArray, QByteArray>> texts {
        { "tEXt", QByteArray("key\0", 4) + QByteArray(7'000'000, 'a') },
        { "zTXt", QByteArray("key\0\0", 5) + compressed },
        { "iTXt", QByteArray("key\0\1\0\0\0", 8) + compressed },
    };
    for (const auto &[type, data] : texts) {
        const int count = type == "tEXt" ? 1 : 40; // more than a gigabyte once decompressed
        auto png = PictureBytes::png(6, 4);
        png.insert(PictureBytes::PngHeaderEnd, PictureBytes::pngChunk(type, data).repeated(count));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(needsLittleMemory(png)) << type.constData();
        EXPECT_EQ(read(png), read(PictureBytes::png(6, 4))) << type.constData();

        const auto icon = PictureBytes::icon({ { 16, png } });
        EXPECT_TRUE(needsLittleMemory(icon)) << type.constData() << " in an icon";
        EXPECT_EQ(read(icon), read(PictureBytes::png(6, 4))) << type.constData() << " in an icon";
        EXPECT_LT(std::chrono::steady_clock::now() - start, 10s) << type.constData();
    }
}

TEST(RasterImageTest, KeepsPaletteAndTransparency)
{
    auto png = PictureBytes::png(6, 4);
    const auto palette =
        PictureBytes::filled(6, 4, Qt::transparent).convertToFormat(QImage::Format_Indexed8);
    const auto indexed = PictureBytes::encoded(palette, "png");
    ASSERT_TRUE(indexed.contains("PLTE") && indexed.contains("tRNS"));
    EXPECT_EQ(read(indexed).pixelColor(0, 0).alpha(), 0);
}

TEST(RasterImageTest, RejectsJpegsWithTooManyScans)
{
    auto jpeg = PictureBytes::encoded(PictureBytes::filled(16, 16), "jpeg", true);
    jpeg = PictureBytes::resizedJpeg(jpeg, 2048, 2048);
    const auto lastScan = jpeg.lastIndexOf("\xFF\xDA");
    ASSERT_GT(lastScan, 0);
    const auto header = jpeg.mid(lastScan, 10);
    ASSERT_FALSE(read(QByteArray(jpeg).insert(lastScan, header.repeated(50))).isNull());
    EXPECT_TRUE(read(jpeg.insert(lastScan, header.repeated(1000))).isNull());
}

} // namespace
