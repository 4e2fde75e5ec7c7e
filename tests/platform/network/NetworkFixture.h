#pragma once

#include "platform/desktop/QtMainQueue.h"
#include "platform/network/CurlHttpClient.h"
#include "platform/network/HttpServer.h"
#include "support/WebAddress.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <utility>

/// One request and its result.
class Request
{
public:
    Request(HttpClient &client, const std::string &address)
    {
        const auto promise = std::make_shared<std::promise<std::string>>();
        m_body = promise->get_future();
        // Breaks the promise if the client releases the function without calling it.
        client.get(*WebAddress::parse(address),
                   [promise](const QByteArray &body) { promise->set_value(body.toStdString()); });
    }

    bool isOver() const
    {
        return m_body.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }

    /// Runs the event loop until the request ends. False after 20 seconds, less than the client's
    /// timeout.
    bool waitUntilOver() const
    {
        constexpr int Timeout = 20'000;
        return QTest::qWaitFor([this] { return isOver(); }, Timeout);
    }

    /// The received body, once; none without one.
    std::optional<std::string> body()
    {
        EXPECT_TRUE(waitUntilOver());
        if (!isOver())
            return std::nullopt;
        try {
            return m_body.get();
        } catch (const std::future_error &) {
            return std::nullopt;
        }
    }

private:
    std::future<std::string> m_body;
};

/// Measures how long the main thread processes no events.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
        m_clock.start();
        m_timer.start(1);
    }

    Heartbeat(const Heartbeat &) = delete;
    Heartbeat &operator=(const Heartbeat &) = delete;

    std::chrono::milliseconds longestPause()
    {
        beat();
        return m_longest;
    }

private:
    void beat() { m_longest = std::max(m_longest, std::chrono::milliseconds(m_clock.restart())); }

    QTimer m_timer;
    QElapsedTimer m_clock;
    std::chrono::milliseconds m_longest {};
};

class NetworkFixture : public testing::Test
{
protected:
    using Exchange = HttpServer::Exchange;

    /// A busy machine causes shorter pauses.
    static constexpr std::chrono::milliseconds MaximumPause = std::chrono::seconds(3);

    /// The body received from a server with this answer.
    std::optional<std::string> receive(std::function<void(Exchange &)> answer)
    {
        const HttpServer server(std::move(answer));
        return fetch(server.address());
    }

    std::optional<std::string> fetch(const std::string &address)
    {
        return Request(client, address).body();
    }

    /// The peak memory of the process in mebibytes.
    static long peakMemory()
    {
        rusage usage {};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
    }

    QtMainQueue mainQueue;
    CurlHttpClient client { mainQueue };
};
