// The way of a website's icon from the server to the disk: asked for, received, read as a picture,
// kept, announced. Beside it the same download alone, whose bytes go nowhere.

#include "Figure.h"
#include "PairedRuns.h"
#include "launchers/FaviconCache.h"
#include "platform/Platform.h"
#include "platform/desktop/DesktopPlatform.h"
#include "platform/network/HttpServer.h"
#include "support/WebAddress.h"

#include <QBuffer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <string>
#include <utility>

namespace
{

constexpr int Runs = 101;

/// The real client, to which every address is one on the server.
class LocalHttpClient final : public HttpClient
{
public:
    LocalHttpClient(HttpClient &client, const HttpServer &server)
        : m_client(client)
        , m_address(*WebAddress::parse(server.address("/favicon.ico")))
    {
    }

    void get(const WebAddress & /*address*/,
             std::function<void(const QByteArray &body)> receive) override
    {
        m_client.get(m_address, std::move(receive));
    }

private:
    HttpClient &m_client;
    WebAddress m_address;
};

std::string icon()
{
    constexpr int Side = 64;
    QImage image(Side, Side, QImage::Format_ARGB32);
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x)
            image.setPixelColor(x, y, QColor(4 * x, 4 * y, x * y % 256, 255));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

/// Turns the main thread's events until `start` calls what it is given.
void waitFor(const std::function<void(std::function<void()>)> &start)
{
    QEventLoop loop;
    start([&loop] { loop.quit(); });
    loop.exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const std::string body = icon();
    const HttpServer server(
        [&body](HttpServer::Exchange &exchange) { exchange.answer(200, body); });
    Platform &desktop = desktopPlatform();
    LocalHttpClient client(desktop.httpClient, server);
    Platform platform { desktop.mainQueue,     desktop.wallClock,
                        desktop.pasteboard,    desktop.workspace,
                        desktop.fileLocations, desktop.windowSystem,
                        desktop.statusBar,     client,
                        desktop.speech };
    const QTemporaryDir folder;
    FaviconCache cache(folder.filePath(QStringLiteral("Favicons")), platform);
    const auto website = *WebAddress::parse("http://website.example");
    const auto id = QUuid::createUuid();

    const auto fetch = [&] {
        waitFor(
            [&](std::function<void()> done) { cache.fetchFavicon(id, website, std::move(done)); });
    };
    const auto download = [&] {
        waitFor([&](std::function<void()> done) {
            client.get(website, [&platform, done = std::move(done)](const QByteArray &) {
                platform.mainQueue.async(done);
            });
        });
    };
    const auto runs = PairedRuns::measure(Runs, fetch, download);
    Figure { "website icon: fetched and kept", "a PNG of 64 pixels",
             runs.firstMilliseconds,           "ms",
             "the same download alone",        runs.ratio }
        .print();
    return EXIT_SUCCESS;
}
