#include "fakes/FakeApplicationChooser.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFiles.h"
#include "launchers/LauncherStore.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/network/NetworkFixture.h"
#include "platform/network/WebPort.h"
#include "support/RasterImage.h"
#include "support/Uuid.h"

#include <QBuffer>
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

/// The real one, which here says how many requests are under way.
class CountingHttpClient final : public HttpClient
{
public:
    explicit CountingHttpClient(MainQueue &mainQueue)
        : m_client(mainQueue)
    {
    }

    void get(const WebAddress &address, std::function<void(const QByteArray &)> receive) override
    {
        ++m_underWay;
        const auto untilLetGo = std::shared_ptr<void>(nullptr, [this](void *) { --m_underWay; });
        m_client.get(address, [receive = std::move(receive), untilLetGo](const QByteArray &body) {
            receive(body);
        });
    }

    int underWay() const { return m_underWay; }

private:
    std::atomic<int> m_underWay = 0;
    CurlHttpClient m_client; // last: its requests count themselves
};

std::string encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return bytes.toStdString();
}

QImage redSquare(int side = 16)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

/// The smallest there is, one point in white; Qt writes none.
std::string gif()
{
    using namespace std::string_literals;
    return "GIF89a\x01\0\x01\0\x80\0\0\xff\xff\xff\0\0\0,\0\0\0\0\x01\0\x01\0\0\x02\x02"s
           "\x44\x01\0;"s;
}

template <typename Number>
std::string littleEndian(Number number)
{
    std::string bytes;
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes += static_cast<char>(number >> (8 * i));
    return bytes;
}

/// The store that the program has, the client, the main queue and the disk; on the other side, a
/// server in the place where all icons are.
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

    /// Answers every request in this way, from now on.
    void serve(Answer answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answer = std::move(answer);
    }

    void serveBody(const std::string &body, int status = 200, const std::string &fields = {})
    {
        serve([=](Exchange &exchange) { exchange.answer(status, body, fields); });
    }

    /// Stores a website, and lets the main thread turn until its icon has come, or will not.
    void storeWebsite(int slot = 0)
    {
        EXPECT_TRUE(store->setWebsite("http://127.0.0.1/docs?q#f", slot));
        EXPECT_TRUE(QTest::qWaitFor([this] { return http.underWay() == 0; }, 20'000));
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

    void expectCached(const std::string &icon)
    {
        EXPECT_EQ(cachedBytes(), icon);
        EXPECT_TRUE(showsIcon());
        EXPECT_EQ(announcements, 2); // the website, then its icon
        EXPECT_EQ(files().size(), 1);
    }

    void expectNothingCached()
    {
        EXPECT_EQ(files(), QStringList());
        EXPECT_FALSE(showsIcon());
        EXPECT_EQ(announcements, 1);
    }

    /// What a server does that wishes us ill keeps nobody from anything, and leaves nothing behind.
    void expectHarmless(Answer answer)
    {
        serve(std::move(answer));
        const long before = peakMemory();
        restart();
        Heartbeat heartbeat;
        storeWebsite();
        expectNothingCached();
        EXPECT_LT(heartbeat.longestPause(), MaximumPause);
        EXPECT_LT(peakMemory() - before, MostMemory);
    }

    void expectHarmless(const std::string &body)
    {
        expectHarmless([=](Exchange &exchange) { exchange.answer(200, body); });
    }

#ifdef __SANITIZE_ADDRESS__
    static constexpr long MostMemory = 700; // what is freed is kept for a while
#else
    static constexpr long MostMemory = 96; // mebibytes
#endif

    FakePlatform fakes;
    QtMainQueue mainQueue;
    CountingHttpClient http { mainQueue };
    Platform platform { mainQueue,           fakes.wallClock,    fakes.pasteboard, fakes.workspace,
                        fakes.fileLocations, fakes.windowSystem, fakes.statusBar,  http,
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
    Answer m_answer; // under the mutex

protected:
    // An answer still runs when its test is over already, so what it uses is here or its own.
    std::atomic<int> asked = 0;
    std::atomic<bool> mayAnswer = false;
    std::optional<HttpServer> server; // last: it uses all of the above
};

TEST_F(FaviconDownloadTest, KeepsIconsAsTheyWereSent)
{
    for (const auto &icon : { encoded(redSquare(), "png"), encoded(redSquare(), "ico"),
                              encoded(redSquare(), "jpg"), encoded(redSquare(), "bmp"), gif() }) {
        SCOPED_TRACE(icon.substr(0, 8));
        serveBody(icon);
        storeWebsite();
        expectCached(icon);
        store->clear(0);
        restart();
    }
}

TEST_F(FaviconDownloadTest, AsksForTheIconOfTheHost)
{
    serveBody(encoded(redSquare(), "png"));
    storeWebsite();
    EXPECT_EQ(server->targets(), std::vector<std::string> { "/favicon.ico" });
}

TEST_F(FaviconDownloadTest, TypeAndStatusAreNotLookedAt)
{
    const auto icon = encoded(redSquare(), "png");
    for (const int status : { 404, 500, 401 }) {
        serveBody(icon, status, "Content-Type: text/html\r\n");
        storeWebsite();
        expectCached(icon);
        store->clear(0);
        restart();
    }
}

TEST_F(FaviconDownloadTest, FollowsRedirects)
{
    const auto icon = encoded(redSquare(), "ico");
    serve([icon](Exchange &exchange) {
        if (exchange.target() == "/favicon.ico")
            exchange.answer(301, "<html>", "Location: /images/icon\r\n");
        else
            exchange.answer(200, icon);
    });
    storeWebsite();
    expectCached(icon);
}

TEST_F(FaviconDownloadTest, KeepsNothingThatIsNoPicture)
{
    expectHarmless("<!doctype html><html><body>Not found</body></html>");
    expectHarmless("<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'/>");
    expectHarmless("");
    expectHarmless("\x89PNG\r\n\x1a\n");
    expectHarmless([](Exchange &exchange) { exchange.answer(404, "<html>Not found</html>"); });
}

TEST_F(FaviconDownloadTest, KeepsACompletePictureThatIsShorterThanAnnounced)
{
    const auto icon = encoded(redSquare(), "png");
    serve([&](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + icon);
    });
    storeWebsite();
    expectCached(icon);
}

TEST_F(FaviconDownloadTest, KeepsNothingOfAPictureThatIsCutOff)
{
    expectHarmless([](Exchange &exchange) {
        const auto icon = encoded(redSquare(), "png");
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(icon.size()) +
                      "\r\n\r\n" + icon.substr(0, icon.find("IDAT") + 8));
    });
}

TEST_F(FaviconDownloadTest, SurvivesEndlessAnswers)
{
    const std::string noise(64 * 1024, 'x');
    const std::string icon = encoded(redSquare(), "png");
    expectHarmless([=](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\n\r\n" + icon);
        exchange.sendForever(noise);
    });
    expectHarmless([noise](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nField: ");
        exchange.sendForever(noise);
    });
}

TEST_F(FaviconDownloadTest, SurvivesAnswersThatAreTooLong)
{
    const std::string icon = encoded(redSquare(), "png") + std::string(8 * 1024 * 1024, 'x');
    expectHarmless(icon);
    expectHarmless([icon](Exchange &exchange) { exchange.send("HTTP/1.1 200 OK\r\n\r\n" + icon); });
}

TEST_F(FaviconDownloadTest, SurvivesRedirectsToNowhere)
{
    QFile file(fakes.directory.filePath(QStringLiteral("secret.png")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(encoded(redSquare(), "png")));
    file.close();
    const auto data = QByteArray::fromStdString(encoded(redSquare(), "png")).toBase64();
    for (const auto &location : std::vector<std::string> {
             "/favicon.ico", "file://" + file.fileName().toStdString(),
             "data:image/png;base64," + data.toStdString(), "ftp://127.0.0.1/icon.png" })
        expectHarmless([location](Exchange &exchange) {
            exchange.answer(302, "moved", "Location: " + location + "\r\n");
        });
}

TEST_F(FaviconDownloadTest, SurvivesPicturesOfOutrageousSize)
{
    // Rows of one colour pack well: some kilobytes for what would take 400 MB.
    QImage wide(20'000, 20'000, QImage::Format_Mono);
    wide.fill(0);
    const auto png = encoded(wide, "png");
    ASSERT_LT(png.size(), 1024 * 1024);
    expectHarmless(png);

    std::string bmp = encoded(redSquare(), "bmp");
    bmp.replace(18, 8, littleEndian(0x7FFF'FFFF) + littleEndian(0x7FFF'FFFF));
    expectHarmless(bmp);

    std::string hugeGif = gif();
    hugeGif.replace(6, 4, "\xff\xff\xff\xff");
    expectHarmless(hugeGif);
}

TEST_F(FaviconDownloadTest, SurvivesIconsFullOfWrongSizesAndPlaces)
{
    constexpr std::uint16_t Most = 0xFFFF;
    std::string icon =
        littleEndian<std::uint16_t>(0) + littleEndian<std::uint16_t>(1) + littleEndian(Most);
    for (std::uint32_t i = 0; i < Most; ++i) {
        icon += std::string("\x10\x10\0\0", 4) + littleEndian<std::uint16_t>(1) +
                littleEndian<std::uint16_t>(32);
        icon += littleEndian<std::uint32_t>(0xFFFF'FFFF - i);
        icon += littleEndian<std::uint32_t>(i * 0x1'0001);
    }
    expectHarmless(icon);
    expectHarmless(icon.substr(0, 1000));
    expectHarmless(icon.substr(0, 6));
}

TEST_F(FaviconDownloadTest, TricklingIconHoldsNobodyUp)
{
    const auto icon = encoded(redSquare(), "png");
    serve([this, icon](Exchange &exchange) {
        if (++asked > 1)
            return exchange.answer(200, icon);
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        while (exchange.send("x") && exchange.pause(20ms)) {
        }
    });
    Heartbeat heartbeat;
    EXPECT_TRUE(store->setWebsite("http://127.0.0.1/slow", 0));
    ASSERT_TRUE(QTest::qWaitFor([this] { return asked == 1; }));
    EXPECT_TRUE(store->setWebsite("http://127.0.0.1/quick", 1));
    EXPECT_TRUE(QTest::qWaitFor([this] { return showsIcon(1); }));
    EXPECT_EQ(cachedBytes(1), icon);
    EXPECT_EQ(http.underWay(), 1);
    EXPECT_FALSE(showsIcon(0));
    EXPECT_LT(heartbeat.longestPause(), MaximumPause);
}

TEST_F(FaviconDownloadTest, FivePicturesComeAtOnce)
{
    const auto icon = encoded(redSquare(), "png");
    serveBody(icon);
    for (int slot = 0; slot < 5; ++slot)
        EXPECT_TRUE(store->setWebsite("http://127.0.0.1/", slot));
    EXPECT_TRUE(QTest::qWaitFor([this] { return announcements == 10; }));
    for (int slot = 0; slot < 5; ++slot)
        EXPECT_EQ(cachedBytes(slot), icon) << slot;
}

TEST_F(FaviconDownloadTest, StoreMayGoWhileAnIconComes)
{
    const auto icon = encoded(redSquare(), "png");
    serve([this, icon](Exchange &exchange) {
        while (!mayAnswer && exchange.pause(5ms)) {
        }
        exchange.answer(200, icon);
    });
    EXPECT_TRUE(store->setWebsite("http://127.0.0.1/", 0));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !server->requests().empty(); }));
    store.reset();
    mayAnswer = true;
    EXPECT_TRUE(QTest::qWaitFor([this] { return http.underWay() == 0; }));
    EXPECT_EQ(files(), QStringList());
}

} // namespace
