#include "platform/network/NetworkFixture.h"

#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

using namespace std::chrono_literals;

/// Slow and silent servers.
class CurlHttpClientWaitingTest : public NetworkFixture
{
protected:
    static void doNotAnswer(Exchange &exchange) { exchange.waitForDisconnect(); }

    static void sendSlowly(Exchange &exchange)
    {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        while (exchange.send("x") && exchange.pause(20ms)) {
        }
    }

    /// The number of threads of clients.
    static int networkThreads()
    {
        int count = 0;
        for (const auto &task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::string name;
            std::getline(std::ifstream(task.path() / "comm"), name);
            count += name == "network";
        }
        return count;
    }

    /// Waits until `server` has received `count` requests.
    static bool waitForRequests(const HttpServer &server, std::size_t count)
    {
        return QTest::qWaitFor([&] { return server.requests().size() >= count; });
    }
};

TEST_F(CurlHttpClientWaitingTest, DeliversOnAnotherThread)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    std::atomic<std::thread::id> receivedOn;
    client.get(*WebAddress::parse(server.address()),
               [&](const QByteArray &) { receivedOn = std::this_thread::get_id(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return receivedOn.load() != std::thread::id(); }));
    EXPECT_NE(receivedOn.load(), std::this_thread::get_id());
}

TEST_F(CurlHttpClientWaitingTest, DeliversWithoutTheMainThread)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    const Request request(client, server.address());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!request.isOver() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(5ms);
    EXPECT_TRUE(request.isOver());
}

TEST_F(CurlHttpClientWaitingTest, HasNoThreadAtRest)
{
    const HttpServer server(doNotAnswer);
    EXPECT_EQ(networkThreads(), 0);
    {
        CurlHttpClient shortLived(mainQueue, { .timeout = 100ms });
        const Request first(shortLived, server.address());
        const Request second(shortLived, server.address());
        EXPECT_TRUE(QTest::qWaitFor([] { return networkThreads() >= 2; }));
        EXPECT_TRUE(first.waitUntilOver());
        EXPECT_TRUE(second.waitUntilOver());
        EXPECT_TRUE(QTest::qWaitFor([] { return networkThreads() == 0; }));
        const Request third(shortLived, server.address());
        EXPECT_TRUE(QTest::qWaitFor([] { return networkThreads() >= 1; }));
        EXPECT_TRUE(third.waitUntilOver());
    }
    EXPECT_EQ(networkThreads(), 0);
}

TEST_F(CurlHttpClientWaitingTest, ReleasesTheResourcesOfFinishedRequests)
{
    // A thread that was not joined keeps its stack of some mebibytes.
    const auto addressSpace = [] {
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024 / 1024;
    };
    const auto answer = [](Exchange &exchange) { exchange.answer(200, "body"); };
    receive(answer);
    const auto before = addressSpace();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(receive(answer), "body");
    EXPECT_LT(addressSpace(), before + 400);
}

TEST_F(CurlHttpClientWaitingTest, SilentServersDelayNoOtherRequest)
{
    const HttpServer silent(doNotAnswer);
    std::vector<Request> waiting;
    for (int i = 0; i < 20; ++i)
        waiting.emplace_back(client, silent.address());
    EXPECT_TRUE(waitForRequests(silent, 20));
    EXPECT_EQ(receive([](Exchange &exchange) { exchange.answer(200, "body"); }), "body");
    for (const auto &request : waiting)
        EXPECT_FALSE(request.isOver());
}

TEST_F(CurlHttpClientWaitingTest, SlowBodiesDelayNeitherTheMainThreadNorOthers)
{
    const HttpServer slow(sendSlowly);
    Heartbeat heartbeat;
    const Request waiting(client, slow.address());
    EXPECT_TRUE(waitForRequests(slow, 1));
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(receive([](Exchange &exchange) { exchange.answer(200, "body"); }), "body");
    EXPECT_FALSE(waiting.isOver());
    EXPECT_LT(heartbeat.longestPause(), MaximumPause);
}

TEST_F(CurlHttpClientWaitingTest, SlowReceiversDelayNoOtherRequest)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    std::promise<void> done;
    std::atomic<bool> isReceiving = false;
    client.get(*WebAddress::parse(server.address()), [&](const QByteArray &) {
        isReceiving = true;
        done.get_future().wait();
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isReceiving.load(); }));
    EXPECT_EQ(fetch(server.address()), "body");
    done.set_value();
}

class TimeoutTest : public CurlHttpClientWaitingTest
{
protected:
    static constexpr auto Timeout = 1500ms;

    TimeoutTest()
    {
        clientWithTimeout.emplace(mainQueue, Transfer::Options { .timeout = Timeout });
    }

    void expectTimeout(const std::string &address)
    {
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(Request(*clientWithTimeout, address).body(), std::nullopt);
        EXPECT_GE(timer.elapsed(), Timeout.count());
    }

    std::optional<CurlHttpClient> clientWithTimeout;
};

TEST_F(TimeoutTest, CancelsAnUnansweredRequest)
{
    const HttpServer server(doNotAnswer);
    expectTimeout(server.address());
}

TEST_F(TimeoutTest, CancelsAStalledBody)
{
    const HttpServer server([](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\nbody");
        exchange.waitForDisconnect();
    });
    expectTimeout(server.address());
}

TEST_F(TimeoutTest, CancelsAPendingConnect)
{
    // The listener accepts no connection, and its backlog is full.
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto *const general = reinterpret_cast<sockaddr *>(&address);
    socklen_t size = sizeof address;
    ASSERT_EQ(bind(listener, general, size), 0);
    ASSERT_EQ(listen(listener, 0), 0);
    ASSERT_EQ(getsockname(listener, general, &size), 0);
    std::array<int, 3> waiting {};
    for (auto &socket : waiting) {
        socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        EXPECT_NE(connect(socket, general, size), 0); // still pending
    }
    expectTimeout("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/");
    for (const int socket : waiting)
        close(socket);
    close(listener);
}

TEST_F(TimeoutTest, CancelsASlowBody)
{
    const HttpServer server(sendSlowly);
    expectTimeout(server.address());
}

TEST_F(TimeoutTest, CoversAllRedirectsTogether)
{
    const HttpServer server([](Exchange &exchange) {
        exchange.pause(400ms);
        exchange.answer(302, "moved", "Location: " + exchange.target() + "x\r\n");
    });
    expectTimeout(server.address());
    EXPECT_LT(server.requests().size(), 10);
}

/// Destroys clients with requests.
class DestructionTest : public CurlHttpClientWaitingTest
{
protected:
    /// Destroys the client during a request, and expects the request to end.
    void expectToEnd(const std::function<void(Exchange &)> &answer)
    {
        const HttpServer server(answer);
        auto destroyed = std::make_unique<CurlHttpClient>(mainQueue);
        Request request(*destroyed, server.address());
        EXPECT_TRUE(waitForRequests(server, 1));
        QTest::qWait(20);
        EXPECT_FALSE(request.isOver());
        QElapsedTimer timer;
        timer.start();
        destroyed.reset();
        EXPECT_LT(timer.elapsed(), MaximumPause.count());
        EXPECT_TRUE(request.isOver());
        EXPECT_EQ(request.body(), std::nullopt);
        EXPECT_EQ(networkThreads(), 0);
    }
};

TEST_F(DestructionTest, CancelsAnUnansweredRequest)
{
    expectToEnd(doNotAnswer);
}

TEST_F(DestructionTest, CancelsASlowBody)
{
    expectToEnd(sendSlowly);
}

TEST_F(DestructionTest, CancelsManyRequests)
{
    const HttpServer server(doNotAnswer);
    auto destroyed = std::make_unique<CurlHttpClient>(mainQueue);
    std::vector<Request> requests;
    for (int i = 0; i < 20; ++i)
        requests.emplace_back(*destroyed, server.address());
    QElapsedTimer timer;
    timer.start();
    destroyed.reset();
    EXPECT_LT(timer.elapsed(), MaximumPause.count());
    for (const auto &request : requests)
        EXPECT_TRUE(request.isOver());
}

TEST_F(DestructionTest, WaitsForARunningReceiver)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    auto destroyed = std::make_unique<CurlHttpClient>(mainQueue);
    std::atomic<bool> isReceiving = false;
    std::atomic<bool> hasReceived = false;
    destroyed->get(*WebAddress::parse(server.address()), [&](const QByteArray &) {
        isReceiving = true;
        std::this_thread::sleep_for(100ms);
        hasReceived = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isReceiving.load(); }));
    destroyed.reset();
    EXPECT_TRUE(hasReceived);
}

TEST_F(DestructionTest, DeliversNothingAfterwards)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    for (int i = 0; i < 200; ++i) {
        auto destroyed = std::make_unique<CurlHttpClient>(mainQueue);
        const auto isAlive = std::make_shared<std::atomic<bool>>(true);
        destroyed->get(*WebAddress::parse(server.address()),
                       [isAlive](const QByteArray &) { EXPECT_TRUE(*isAlive); });
        std::this_thread::sleep_for(20us * i);
        destroyed.reset();
        *isAlive = false;
        EXPECT_EQ(isAlive.use_count(), 1); // the client has released the function
    }
}

TEST_F(DestructionTest, IsSafeWithPendingMainQueueWork)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    auto destroyed = std::make_unique<CurlHttpClient>(mainQueue);
    const Request request(*destroyed, server.address());
    while (!request.isOver())
        std::this_thread::sleep_for(1ms);
    std::this_thread::sleep_for(20ms); // the end of the download is now queued
    destroyed.reset();
    QCoreApplication::processEvents();
}

} // namespace
