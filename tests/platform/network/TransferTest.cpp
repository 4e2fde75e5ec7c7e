#include "platform/network/Transfer.h"

#include "platform/network/NetworkFixture.h"

#include <stop_token>

namespace
{

class TransferTest : public NetworkFixture
{
};

TEST_F(TransferTest, SendsNoRequestAfterAStop)
{
    const HttpServer server([](HttpServer::Exchange &exchange) { exchange.answer(200, "body"); });
    std::stop_source source;
    Transfer transfer({}, source.get_token());
    EXPECT_TRUE(transfer.get(server.address(), "http", {}).has_value());
    source.request_stop();
    EXPECT_FALSE(transfer.get(server.address(), "http", {}).has_value());
    EXPECT_EQ(fetch(server.address()), "body");
    EXPECT_EQ(server.connectionsSoFar(), 2);
}

} // namespace
