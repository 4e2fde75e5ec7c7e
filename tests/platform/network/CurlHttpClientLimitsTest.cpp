#include "platform/network/NetworkFixture.h"

#include <string_view>

namespace
{

constexpr std::size_t Mebibyte = 1024 * 1024;
constexpr std::size_t MaximumBodySize = 8 * Mebibyte;

#ifdef __SANITIZE_ADDRESS__
constexpr long MaximumMemory = 700; // AddressSanitizer keeps freed memory for a while
#else
constexpr long MaximumMemory = 64; // mebibytes; reallocation can hold a body twice
#endif

/// Endless responses must take little time and memory.
class CurlHttpClientLimitsTest : public NetworkFixture
{
protected:
    void expectNothingFrom(const std::function<void(Exchange &)> &answer)
    {
        const long before = peakMemory();
        Heartbeat heartbeat;
        const HttpServer server(answer);
        EXPECT_FALSE(fetch(server.address()).has_value());
        EXPECT_TRUE(QTest::qWaitFor([&] { return server.connections() == 0; }));
        EXPECT_LT(server.bytesSent(), 64 * Mebibyte);
        EXPECT_LT(peakMemory() - before, MaximumMemory);
        EXPECT_LT(heartbeat.longestPause(), MaximumPause);
    }

    /// Sends `head`, then `rest` until the client disconnects.
    void expectNothingFrom(const std::string &head, std::string_view rest)
    {
        SCOPED_TRACE(head);
        expectNothingFrom([&](Exchange &exchange) {
            exchange.send(head);
            exchange.sendForever(rest);
        });
    }

    static std::string repeated(std::string_view text)
    {
        constexpr std::size_t Enough = 64 * 1024;
        std::string all;
        while (all.size() < Enough)
            all += text;
        return all;
    }

    const std::string noise = repeated("x");
};

TEST_F(CurlHttpClientLimitsTest, AcceptsABodyOfEightMebibytes)
{
    const std::string body(MaximumBodySize, 'x');
    EXPECT_TRUE(receive([&](Exchange &exchange) { exchange.answer(200, body); }) == body);
    EXPECT_TRUE(receive([&](Exchange &exchange) {
                    exchange.send("HTTP/1.1 200 OK\r\n\r\n");
                    exchange.send(body);
                }) == body);
}

TEST_F(CurlHttpClientLimitsTest, RejectsABodyAboveEightMebibytes)
{
    const std::string body(MaximumBodySize + 1, 'x');
    EXPECT_FALSE(receive([&](Exchange &exchange) { exchange.answer(200, body); }));
    EXPECT_FALSE(receive([&](Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\n\r\n");
        exchange.send(body);
    }));
}

TEST_F(CurlHttpClientLimitsTest, RejectsATooLargeContentLengthWithoutWaiting)
{
    for (const auto &length :
         { std::to_string(MaximumBodySize + 1), std::string("9223372036854775807") })
        expectNothingFrom([&](Exchange &exchange) {
            exchange.send("HTTP/1.1 200 OK\r\nContent-Length: " + length + "\r\n\r\n");
            exchange.waitForDisconnect();
        });
}

TEST_F(CurlHttpClientLimitsTest, RejectsAnEndlessBody)
{
    for (const std::string status : { "200 OK", "302 Found", "401 Unauthorized", "404 Not Found",
                                      "407 Proxy Authentication Required" })
        expectNothingFrom("HTTP/1.1 " + status +
                              "\r\nWWW-Authenticate: Basic realm=\"x\"\r\n"
                              "Proxy-Authenticate: Basic realm=\"x\"\r\n\r\n",
                          noise);
}

TEST_F(CurlHttpClientLimitsTest, RejectsAnEndlessBodyOfARedirect)
{
    expectNothingFrom("HTTP/1.1 302 Found\r\nLocation: /there\r\n\r\n", noise);
}

TEST_F(CurlHttpClientLimitsTest, RejectsEndlessChunks)
{
    const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    expectNothingFrom(head, "1\r\nx\r\n" + repeated("1\r\nx\r\n"));
    expectNothingFrom(head, "10000\r\n" + std::string(0x10000, 'x') + "\r\n");
    expectNothingFrom(head + "7fffffff\r\n", noise);
}

TEST_F(CurlHttpClientLimitsTest, RejectsAnEndlessChunkSize)
{
    const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    expectNothingFrom(head, repeated("1"));
    expectNothingFrom(head, repeated("0"));
}

TEST_F(CurlHttpClientLimitsTest, RejectsEndlessHeaders)
{
    expectNothingFrom("", noise);
    expectNothingFrom("HTTP/1.1 ", noise);
    expectNothingFrom("HTTP/1.1 200 OK\r\nField: ", noise);
    expectNothingFrom("HTTP/1.1 200 OK\r\n", repeated("Field: value\r\n"));
    expectNothingFrom("", repeated("HTTP/1.1 100 Continue\r\n\r\n"));
}

TEST_F(CurlHttpClientLimitsTest, LimitsHeadersToAQuarterMebibyte)
{
    const std::string fields = repeated("Field: value\r\n"); // some 64 KiB
    EXPECT_EQ(receive([&](Exchange &exchange) { exchange.answer(200, "body", fields); }), "body");
    const std::string more = fields + fields + fields + fields;
    EXPECT_EQ(receive([&](Exchange &exchange) { exchange.answer(200, "body", more); }),
              std::nullopt);
}

TEST_F(CurlHttpClientLimitsTest, LimitsTheDecompressedBody)
{
    constexpr int LengthField = 4; // Qt prepends it to the stream
    const auto bomb = qCompress(QByteArray(64 * int(Mebibyte), 'x')).mid(LengthField);
    ASSERT_LT(bomb.size(), Mebibyte);
    expectNothingFrom([&](Exchange &exchange) {
        exchange.answer(200, { bomb.data(), std::size_t(bomb.size()) },
                        "Content-Encoding: deflate\r\n");
    });
}

} // namespace
