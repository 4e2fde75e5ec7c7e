// Measures a website icon from the request to the announcement: downloaded, decoded, saved.
// Compared with the download alone, which discards the bytes.

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

/// The real client, with every request redirected to the test server.
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

/// Runs the event loop until `start` calls its argument.
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
    Platform platform { desktop.mainQueue, desktop.wallClock,     desktop.pasteboard,
                        desktop.workspace, desktop.fileLocations, desktop.windowSystem,
                        desktop.statusBar, desktop.desktopSearch, client,
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
    Figure { "website icon: downloaded and saved",
             "a PNG of 64 pixels",
             runs.firstMilliseconds,
             "ms",
             "the same download alone",
             runs.ratio }
        .print();
    return EXIT_SUCCESS;
}
