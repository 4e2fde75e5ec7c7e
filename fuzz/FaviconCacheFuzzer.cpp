// Only images are stored, unchanged, and decoding takes little memory.
#include "Expect.h"
#include "HeapPeak.h"
#include "UninitialisedMemory.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFiles.h"
#include "launchers/FaviconCache.h"
#include "support/RasterImage.h"
#include "support/Uuid.h"
#include "support/WebAddress.h"

#include <QByteArray>
#include <QImage>
#include <QUuid>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace
{

constexpr qint64 MaximumPixels = 2048 * 2048;
constexpr std::size_t MaximumMemory = 100 * 1024 * 1024; // bytes

/// Tests only the first bytes. Cursors have the format of icons.
bool mayBeImage(const QByteArray &body)
{
    static const std::array<QByteArray, 6> Signatures {
        "\x89PNG\r\n\x1A\n",      "GIF8", "\xFF\xD8", "BM", QByteArray("\0\0\1\0", 4),
        QByteArray("\0\0\2\0", 4)
    };
    const auto beginsBody = [&body](const QByteArray &each) { return body.startsWith(each); };
    return std::ranges::any_of(Signatures, beginsBody) ||
           (body.startsWith("RIFF") && body.mid(8, 4) == "WEBP");
}

/// Compares the pixels; of GIFs only the size. Around a first frame that has its own palette and
/// does not fill the canvas, their reader paints with an uninitialised entry of that palette.
bool isSame(const QImage &image, const QImage &other, const QByteArray &body)
{
    return body.startsWith("GIF8") ? image.size() == other.size() : image == other;
}

QImage readWithinLimits(const QByteArray &body, int side)
{
    const HeapPeak peak;
    QImage image = RasterImage::read(body, side);
    expect(peak.bytes() < MaximumMemory, "decoding takes little memory");
    expect(qint64(image.width()) * image.height() <= MaximumPixels, "no image is too large");
    return image;
}

/// A website that sends its icon immediately.
class Website
{
public:
    /// Whether the icon was stored.
    bool sendIcon(const QByteArray &body)
    {
        int calls = 0;
        m_cache.removeCachedIcon(m_launcher);
        m_machine.httpClient.requests.clear();
        m_cache.fetchFavicon(m_launcher, m_address, [&calls] { ++calls; });
        m_machine.httpClient.requests.at(0).receive(body); // faster than with a thread
        m_machine.mainQueue.runPending();
        expect(calls <= 1, "an icon is stored once");
        return calls == 1;
    }

    bool hasFile() const { return std::filesystem::exists(m_file); }

    std::string file() const { return TestFiles::read(m_file); }

    QImage icon(int side) const { return m_cache.cachedIcon(m_launcher, side); }

private:
    FakePlatform m_machine;
    QString m_folder = m_machine.directory.filePath(QStringLiteral("Favicons"));
    FaviconCache m_cache { m_folder, m_machine.platform };
    QUuid m_launcher = QUuid::createUuid();
    WebAddress m_address = *WebAddress::parse("https://example.com");
    std::filesystem::path m_file = std::filesystem::path(m_folder.toStdString()) /
                                   (std::string(uuidText(m_launcher).data(), 36) + ".png");
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*count*/, char *** /*arguments*/)
{
    UninitialisedMemory::vary();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    constexpr int Side = 32;
    static Website website;
    const QByteArray body(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    const bool isStored = website.sendIcon(body);
    const QImage image = readWithinLimits(body, 1);
    expect(isStored == !image.isNull(), "images are stored, and nothing else");
    expect(isStored == website.hasFile(), "the file exists if and only if it was reported");
    expect(!isStored || mayBeImage(body), "a stored file begins with the signature of an image");
    expect(!isStored || website.file() == body.toStdString(), "an icon is stored unchanged");
    expect(isSame(website.icon(1), image, body), "the stored icon is the received one");
    if (isStored)
        expect(isSame(website.icon(Side), readWithinLimits(body, Side), body),
               "the same at every size");
    return 0;
}
