// Of what a website sends only pictures are kept, as they came, and none takes much memory.
#include "Expect.h"
#include "HeapPeak.h"
#include "UnsetMemory.h"
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

constexpr qint64 MostPoints = 2048 * 2048;
constexpr std::size_t MostMemory = 100 * 1024 * 1024; // bytes

/// By the first bytes alone. Cursors are made as icons are.
bool mayBePicture(const QByteArray &body)
{
    static const std::array<QByteArray, 6> Beginnings {
        "\x89PNG\r\n\x1A\n",      "GIF8", "\xFF\xD8", "BM", QByteArray("\0\0\1\0", 4),
        QByteArray("\0\0\2\0", 4)
    };
    const auto beginsBody = [&body](const QByteArray &each) { return body.startsWith(each); };
    return std::ranges::any_of(Beginnings, beginsBody) ||
           (body.startsWith("RIFF") && body.mid(8, 4) == "WEBP");
}

/// Point by point. Of GIFs only the size: around a first frame that has its own colours and does
/// not fill the picture, their reader paints with one of these before it has read them.
bool isSame(const QImage &image, const QImage &other, const QByteArray &body)
{
    return body.startsWith("GIF8") ? image.size() == other.size() : image == other;
}

QImage readFrugally(const QByteArray &body, int side)
{
    const HeapPeak peak;
    QImage image = RasterImage::read(body, side);
    expect(peak.bytes() < MostMemory, "reading a picture takes little memory");
    expect(qint64(image.width()) * image.height() <= MostPoints, "no picture is too large");
    return image;
}

/// A website that answers each question for its icon at once.
class Website
{
public:
    /// Whether an icon was stored, which is said on the main thread.
    bool sendIcon(const QByteArray &body)
    {
        int calls = 0;
        m_cache.removeCachedIcon(m_launcher);
        m_machine.httpClient.requests.clear();
        m_cache.fetchFavicon(m_launcher, m_address, [&calls] { ++calls; });
        m_machine.httpClient.requests.at(0).receive(body); // no thread: that would take longer
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
    UnsetMemory::keepChanging();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    constexpr int Side = 32;
    static Website website;
    const QByteArray body(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    const bool isStored = website.sendIcon(body);
    const QImage image = readFrugally(body, 1);
    expect(isStored == !image.isNull(), "pictures are stored, and nothing else");
    expect(isStored == website.hasFile(), "only what is said to be stored is there");
    expect(!isStored || mayBePicture(body), "what is stored begins as a picture does");
    expect(!isStored || website.file() == body.toStdString(), "an icon is stored as it came");
    expect(isSame(website.icon(1), image, body), "the stored icon is the one that was sent");
    if (isStored)
        expect(isSame(website.icon(Side), readFrugally(body, Side), body), "for every size");
    return 0;
}
