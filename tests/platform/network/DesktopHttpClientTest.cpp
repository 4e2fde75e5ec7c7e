#include "platform/desktop/DesktopHttpClient.h"

#include "platform/desktop/QtMainQueue.h"
#include "platform/network/HttpServer.h"
#include "support/WebAddress.h"

#include <QTest>
#include <gtest/gtest.h>

#include <future>
#include <optional>

namespace
{

using namespace std::chrono_literals;

TEST(DesktopHttpClientTest, FetchesThroughTheModule)
{
    const HttpServer server([](auto &exchange) { exchange.answer(200, "body"); });
    std::promise<QByteArray> promise;
    auto body = promise.get_future();
    QtMainQueue mainQueue;
    DesktopHttpClient client(mainQueue);
    client.get(*WebAddress::parse(server.address()),
               [&promise](const QByteArray &received) { promise.set_value(received); });
    ASSERT_TRUE(QTest::qWaitFor([&body] { return body.wait_for(0s) == std::future_status::ready; },
                                20'000));
    EXPECT_EQ(body.get(), "body");
}

TEST(DesktopHttpClientTest, CanBeDestroyedDuringARequest)
{
    const HttpServer server([](auto &exchange) { exchange.waitForDisconnect(); });
    QtMainQueue mainQueue;
    std::optional<DesktopHttpClient> client { mainQueue };
    const auto callback = std::make_shared<int>();
    client->get(*WebAddress::parse(server.address()), [callback](const QByteArray &) {});
    EXPECT_TRUE(QTest::qWaitFor([&server] { return !server.requests().empty(); }));
    client.reset();
    EXPECT_EQ(callback.use_count(), 1);
}

} // namespace
