#include "fakes/FakeApplicationChooser.h"
#include "fakes/FakePlatform.h"
#include "fakes/PictureBytes.h"
#include "fakes/TestFiles.h"
#include "launchers/LauncherStore.h"
#include "platform/network/NetworkFixture.h"
#include "platform/network/WebPort.h"
#include "support/Uuid.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <atomic>
#include <mutex>
#include <system_error>
#include <utility>

namespace
{

using namespace std::chrono_literals;

/// The real client, which also counts running requests.
class CountingHttpClient final : public HttpClient
{
public:
    explicit CountingHttpClient(MainQueue &mainQueue)
        : m_client(mainQueue)
    {
    }

    void get(const WebAddress &address, std::function<void(const QByteArray &)> receive) override
    {
        ++m_running;
        const auto guard = std::shared_ptr<void>(nullptr, [this](void *) { --m_running; });
        m_client.get(address, [receive = std::move(receive), guard](const QByteArray &body) {
            receive(body);
        });
    }

    int running() const { return m_running; }

private:
    std::atomic<int> m_running = 0;
    CurlHttpClient m_client; // last, because its requests use the counter
};

std::string redIcon(const char *format = "png")
{
    return PictureBytes::encoded(PictureBytes::filled(16, 16), format).toStdString();
}

/// The store with the real client, main queue and disk, and a server on port 80.
class FaviconDownloadTest : public NetworkFixture
{
protected:
    using Answer = std::function<void(Exchange &)>;

    void SetUp() override
    {
        try {
            server.emplace([this](Exchange &exchange) { currentAnswer()(exchange); },
                           WebPort::Number);
        } catch (const std::system_error &error) {
            GTEST_SKIP() << "Port 80 of 127.0.0.1 and network namespaces are not available: "
                         << error.what();
        }
        restart();
    }

    void restart()
    {
        store.emplace(applicationChooser, platform);
        m_observation = store->slots().sink([this](const LauncherSlots &) { ++announcements; });
        announcements = 0;
    }

    /// Answers every later request with `answer`.
    void serve(Answer answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answer = std::move(answer);
    }

    void serveBody(const std::string &body, int status = 200, const std::string &fields = {})
    {
        serve([=](Exchange &exchange) { exchange.answer(status, body, fields); });
    }

    /// Stores a website and runs the event loop until its download has ended.
    void storeWebsite(int slot = 0)
    {
        EXPECT_TRUE(store->setWebsite("http://127.0.0.1/docs?q#f", slot));
        EXPECT_TRUE(QTest::qWaitFor([this] { return http.running() == 0; }, 20'000));
        QCoreApplication::processEvents();
    }

    LauncherItem item(int slot = 0) const
    {
        return *store->slots().get()[static_cast<std::size_t>(slot)];
    }

    QString folder() const
    {
        return fakes.directory.path() + QStringLiteral("/Quillsatchel/Favicons");
    }

    QStringList files() const
    {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::string cachedBytes(int slot = 0) const
    {
        const std::string name(uuidText(item(slot).id).data(), 36);
        return TestFiles::read(folder().toStdString() + "/" + name + ".png");
    }

    bool showsIcon(int slot = 0) const { return !store->icon(item(slot), 18).image.isNull(); }

    void expectStored(const std::string &icon)
    {
        EXPECT_EQ(cachedBytes(), icon);
        EXPECT_TRUE(showsIcon());
        EXPECT_EQ(announcements, 2); // the website, then its icon
        EXPECT_EQ(files().size(), 1);
    }

    void expectNothingStored()
    {
        EXPECT_EQ(files(), QStringList());
        EXPECT_FALSE(showsIcon());
        EXPECT_EQ(announcements, 1);
    }

    /// Expects that the answer of a malicious server blocks nothing, uses little memory and stores
    /// nothing.
    void expectHarmless(Answer answer)
    {
        serve(std::move(answer));
        const long before = peakMemory();
        restart();
        Heartbeat heartbeat;
        storeWebsite();
        expectNothingStored();
        EXPECT_LT(heartbeat.longestPause(), MaximumPause);
        EXPECT_LT(peakMemory() - before, MaximumMemory);
    }

    void expectHarmless(const std::string &body)
    {
        expectHarmless([=](Exchange &exchange) { exchange.answer(200, body); });
    }

#ifdef __SANITIZE_ADDRESS__
    static constexpr long MaximumMemory = 700; // freed memory stays in quarantine
#else
    static constexpr long MaximumMemory = 96; // MiB
#endif

    FakePlatform fakes;
    CountingHttpClient http { mainQueue };
    Platform platform { mainQueue,       fakes.wallClock,     fakes.pasteboard,
                        fakes.workspace, fakes.fileLocations, fakes.windowSystem,
                        fakes.statusBar, fakes.desktopSearch, http,
                        fakes.speech };
    FakeApplicationChooser applicationChooser;
    std::optional<LauncherStore> store;
    int announcements = 0;

private:
    Answer currentAnswer()
    {
        const std::lock_guard lock(m_mutex);
        return m_answer;
    }

    Cancellable m_observation;
    std::mutex m_mutex;
    Answer m_answer; // guarded by the mutex

protected:
    // An answer may still run when its test ends, so it may use only these members and its
    // captures.
    std::atomic<int> requestCount = 0;
    std::atomic<bool> mayAnswer = false;
    std::optional<HttpServer> server; // last, because it uses the members above
};

TEST_F(FaviconDownloadTest, StoresIconsUnchanged)
{
    for (const auto &bytes : { redIcon("png"), redIcon("ico"), redIcon("jpg"), redIcon("bmp"),
                               PictureBytes::gif(1, 1).toStdString() }) {
        SCOPED_TRACE(bytes.substr(0, 8));
        serveBody(bytes);
        storeWebsite();
        expectStored(bytes);
        store->clear(0);
        restart();
    }
}

TEST_F(FaviconDownloadTest, RequestsTheIconOfTheHost)
{
    serveBody(redIcon());
    storeWebsite();
    EXPECT_EQ(server->targets(), std::vector<std::string> { "/favicon.ico" });
}

TEST_F(FaviconDownloadTest, IgnoresContentTypeAndStatus)
{
    const auto icon = redIcon();
    for (const int status : { 404, 500, 401 }) {
        serveBody(icon, status, "Content-Type: text/html\r\n");
        storeWebsite();
        expectStored(icon);
        store->clear(0);
        restart();
    }
}

TEST_F(FaviconDownloadTest, FollowsRedirects)
{
    const auto icon = redIcon("ico");
    serve([icon](Exchange &exchange) {
        if (exchange.target() == "/favicon.ico")
            exchange.answer(301, "<html>", "Location: /images/icon\r\n");
        else
            exchange.answer(200, icon);
    });
    storeWebsite();
    expectStored(icon);
}

TEST_F(FaviconDownloadTest, DropsInvalidImages)
{
    expectHarmless("<!doctype html><html><body>Not found</body></html>");
    expectHarmless("<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'/>");
    expectHarmless("");
    expectHarmless("\x89PNG\r\n\x1a\n");
    expectHarmless([](Exchange &exchange) { exchange.answer(404, "<html>Not found</html>"); });
}

TEST_F(FaviconDownloadTest, StoresACompleteImageShorterThanAnnounced)
{
    const auto icon = redIcon();
    serve([&](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + icon);
    });
    storeWebsite();
    expectStored(icon);
}

TEST_F(FaviconDownloadTest, DropsATruncatedImage)
{
    expectHarmless([](Exchange &exchange) {
        const auto icon = redIcon();
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(icon.size()) +
                      "\r\n\r\n" + icon.substr(0, icon.find("IDAT") + 8));
    });
}

TEST_F(FaviconDownloadTest, SurvivesEndlessAnswers)
{
    const std::string noise(64 * 1024, 'x');
    const std::string icon = redIcon();
    expectHarmless([=](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\n\r\n" + icon);
        exchange.sendForever(noise);
    });
    expectHarmless([noise](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nField: ");
        exchange.sendForever(noise);
    });
}

TEST_F(FaviconDownloadTest, SurvivesOversizedAnswers)
{
    const std::string icon = redIcon() + std::string(8 * 1024 * 1024, 'x');
    expectHarmless(icon);
    expectHarmless([icon](Exchange &exchange) { exchange.send("HTTP/1.1 200 OK\r\n\r\n" + icon); });
}

TEST_F(FaviconDownloadTest, SurvivesInvalidRedirects)
{
    QFile file(fakes.directory.filePath(QStringLiteral("secret.png")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(redIcon()));
    file.close();
    const auto data = QByteArray::fromStdString(redIcon()).toBase64();
    for (const auto &location : std::vector<std::string> {
             "/favicon.ico", "file://" + file.fileName().toStdString(),
             "data:image/png;base64," + data.toStdString(), "ftp://127.0.0.1/icon.png" })
        expectHarmless([location](Exchange &exchange) {
            exchange.answer(302, "moved", "Location: " + location + "\r\n");
        });
}

TEST_F(FaviconDownloadTest, SurvivesHugeImages)
{
    // Rows of one colour compress well: a few kilobytes for an image of 400 MB.
    QImage wide(20'000, 20'000, QImage::Format_Mono);
    wide.fill(0);
    const auto png = PictureBytes::encoded(wide, "png");
    ASSERT_LT(png.size(), 1024 * 1024);
    expectHarmless(png.toStdString());

    constexpr qint32 Huge = 0x7FFF'FFFF;
    expectHarmless(PictureBytes::bmp(Huge, Huge, QByteArray(1000, '\0')).toStdString());
    expectHarmless(PictureBytes::gif(0xFFFF, 0xFFFF).toStdString());
}

TEST_F(FaviconDownloadTest, SurvivesIconsWithInvalidSizesAndOffsets)
{
    using PictureBytes::littleEndian;
    constexpr quint16 Count = 0xFFFF;
    auto icon = littleEndian<quint16>(0) + littleEndian<quint16>(1) + littleEndian(Count);
    for (quint32 i = 0; i < Count; ++i) {
        icon +=
            QByteArray("\x10\x10\0\0", 4) + littleEndian<quint16>(1) + littleEndian<quint16>(32);
        icon += littleEndian<quint32>(0xFFFF'FFFF - i);
        icon += littleEndian<quint32>(i * 0x1'0001);
    }
    expectHarmless(icon.toStdString());
    expectHarmless(icon.first(1000).toStdString());
    expectHarmless(icon.first(6).toStdString());
}

TEST_F(FaviconDownloadTest, IsNotBlockedByASlowDownload)
{
    const auto icon = redIcon();
    serve([this, icon](Exchange &exchange) {
        if (++requestCount > 1)
            return exchange.answer(200, icon);
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        while (exchange.send("x") && exchange.pause(20ms)) {
        }
    });
    Heartbeat heartbeat;
    EXPECT_TRUE(store->setWebsite("http://127.0.0.1/slow", 0));
    ASSERT_TRUE(QTest::qWaitFor([this] { return requestCount == 1; }));
    EXPECT_TRUE(store->setWebsite("http://127.0.0.1/quick", 1));
    EXPECT_TRUE(QTest::qWaitFor([this] { return showsIcon(1); }));
    EXPECT_EQ(cachedBytes(1), icon);
    EXPECT_EQ(http.running(), 1);
    EXPECT_FALSE(showsIcon(0));
    EXPECT_LT(heartbeat.longestPause(), MaximumPause);
}

TEST_F(FaviconDownloadTest, DownloadsFiveIconsConcurrently)
{
    const auto icon = redIcon();
    serveBody(icon);
    for (int slot = 0; slot < 5; ++slot)
        EXPECT_TRUE(store->setWebsite("http://127.0.0.1/", slot));
    EXPECT_TRUE(QTest::qWaitFor([this] { return announcements == 10; }));
    for (int slot = 0; slot < 5; ++slot)
        EXPECT_EQ(cachedBytes(slot), icon) << slot;
}

TEST_F(FaviconDownloadTest, AllowsDestroyingTheStoreDuringADownload)
{
    const auto icon = redIcon();
    serve([this, icon](Exchange &exchange) {
        while (!mayAnswer && exchange.pause(5ms)) {
        }
        exchange.answer(200, icon);
    });
    EXPECT_TRUE(store->setWebsite("http://127.0.0.1/", 0));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !server->requests().empty(); }));
    store.reset();
    mayAnswer = true;
    EXPECT_TRUE(QTest::qWaitFor([this] { return http.running() == 0; }));
    EXPECT_EQ(files(), QStringList());
}

} // namespace
