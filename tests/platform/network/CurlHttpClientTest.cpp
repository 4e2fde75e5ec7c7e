#include "fakes/ThreadlessScope.h"
#include "platform/network/NetworkFixture.h"

#include <QTemporaryDir>
#include <QTemporaryFile>

namespace
{

class CurlHttpClientTest : public NetworkFixture
{
protected:
    /// Redirects "/" to `location`, and answers "there" for every other target.
    static std::function<void(Exchange &)> redirectTo(const std::string &location, int status = 302)
    {
        return [=](Exchange &exchange) {
            if (exchange.target() == "/")
                exchange.answer(status, "moved", "Location: " + location + "\r\n");
            else
                exchange.answer(200, "there");
        };
    }
};

TEST_F(CurlHttpClientTest, ReceivesTheBodyByteForByte)
{
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    EXPECT_EQ(receive([&](Exchange &exchange) { exchange.answer(200, everyByte); }), everyByte);
}

TEST_F(CurlHttpClientTest, SendsAMinimalRequest)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "icon"); });
    EXPECT_EQ(fetch(server.address("/favicon.ico")), "icon");
    ASSERT_EQ(server.requests().size(), 1);
    const std::string head = server.requests().front();
    EXPECT_TRUE(head.starts_with("GET /favicon.ico HTTP/1.1\r\n")) << head;
    EXPECT_NE(head.find("\r\nHost: 127.0.0.1:" + std::to_string(server.port()) + "\r\n"),
              std::string::npos)
        << head;
    for (const auto *const field : { "Cookie:", "Authorization:", "Referer:", "Upgrade:" })
        EXPECT_EQ(head.find(field), std::string::npos) << head;
}

TEST_F(CurlHttpClientTest, ReceivesTheBodyOfAnyStatus)
{
    for (const int status : { 200, 201, 203, 206, 300, 301, 302, 308, 400, 401, 402, 403,
                              404, 407, 410, 418, 422, 451, 500, 501, 503, 599, 999 }) {
        const std::string fields = "WWW-Authenticate: Basic realm=\"x\"\r\n"
                                   "Proxy-Authenticate: Basic realm=\"x\"\r\n";
        EXPECT_EQ(receive([&](Exchange &exchange) { exchange.answer(status, "body", fields); }),
                  "body")
            << status;
    }
}

TEST_F(CurlHttpClientTest, DeliversNoEmptyBody)
{
    for (const int status : { 200, 204, 304, 404 })
        EXPECT_EQ(receive([&](Exchange &exchange) { exchange.answer(status, ""); }), std::nullopt)
            << status;
}

TEST_F(CurlHttpClientTest, ReceivesABodyEndedByConnectionClose)
{
    EXPECT_EQ(receive([](Exchange &exchange) { exchange.send("HTTP/1.0 200 OK\r\n\r\nbody"); }),
              "body");
}

TEST_F(CurlHttpClientTest, ReceivesAChunkedBody)
{
    EXPECT_EQ(receive([](Exchange &exchange) {
                  exchange.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                "2\r\nbo\r\n2;extension\r\ndy\r\n0\r\n\r\n");
              }),
              "body");
}

TEST_F(CurlHttpClientTest, DecompressesTheBody)
{
    const std::string icon(10'000, 'i');
    constexpr int LengthField = 4; // Qt prepends it to the stream
    const auto compressed = qCompress(QByteArray::fromStdString(icon)).mid(LengthField);
    ASSERT_LT(compressed.size(), 1000);
    EXPECT_EQ(receive([&](Exchange &exchange) {
                  exchange.answer(200, compressed.toStdString(), "Content-Encoding: deflate\r\n");
              }),
              icon);
}

TEST_F(CurlHttpClientTest, ReceivesATruncatedBody)
{
    for (const std::string head : { "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nbody",
                                    "HTTP/1.1 404 Not Found\r\nContent-Length: 100\r\n\r\nbody",
                                    "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                    "4\r\nbody\r\n" })
        EXPECT_EQ(receive([&](Exchange &exchange) { exchange.send(head); }), "body") << head;
}

TEST_F(CurlHttpClientTest, DeliversNothingIfTheConnectionClosesEarly)
{
    EXPECT_EQ(receive([](Exchange &exchange) {
                  exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
              }),
              std::nullopt);
}

TEST_F(CurlHttpClientTest, IgnoresBytesBeyondTheContentLength)
{
    EXPECT_EQ(receive([](Exchange &exchange) {
                  exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody and more");
              }),
              "body");
}

TEST_F(CurlHttpClientTest, RejectsAnInvalidContentLength)
{
    for (const std::string length : { "-4", "99999999999999999999999", "many" }) {
        EXPECT_EQ(receive([&](Exchange &exchange) {
                      exchange.send("HTTP/1.1 200 OK\r\nContent-Length: " + length +
                                    "\r\n\r\nbody");
                  }),
                  std::nullopt)
            << length;
    }
}

TEST_F(CurlHttpClientTest, RejectsResponsesThatAreNotHttp)
{
    for (const std::string answer : { "", "body", "\x16\x03\x01\x02\r\n\r\n", "SSH-2.0-x\r\n" })
        EXPECT_EQ(receive([&](Exchange &exchange) { exchange.send(answer); }), std::nullopt)
            << answer;
}

TEST_F(CurlHttpClientTest, FailsIfTheServerIsUnreachable)
{
    std::string address;
    {
        const HttpServer server([](Exchange &) {});
        address = server.address();
    }
    EXPECT_EQ(fetch(address), std::nullopt);
    EXPECT_EQ(fetch("http://127.0.0.1:99999/"), std::nullopt);
    EXPECT_EQ(fetch("http:///favicon.ico"), std::nullopt);
    EXPECT_EQ(fetch("http://no-such-host.invalid/"), std::nullopt);
}

TEST_F(CurlHttpClientTest, FailsIfTheSystemRefusesAThread)
{
    const HttpServer server([](Exchange &exchange) { exchange.answer(200, "body"); });
    const QTemporaryDir folder;
    {
        const ThreadlessScope scope(folder.path().toStdString());
        EXPECT_FALSE(fetch(server.address()));
    }
    EXPECT_EQ(fetch(server.address()), "body");
}

TEST_F(CurlHttpClientTest, FollowsRedirects)
{
    for (const int status : { 301, 302, 303, 307, 308 }) {
        for (const std::string location : { "/there", "there", "?there", "./x/../there" })
            EXPECT_EQ(receive(redirectTo(location, status)), "there") << status << location;
    }
}

TEST_F(CurlHttpClientTest, IgnoresTheLocationOfOtherResponses)
{
    for (const int status : { 200, 201, 206, 299, 400, 404, 500 })
        EXPECT_EQ(receive(redirectTo("/there", status)), "moved") << status;
}

TEST_F(CurlHttpClientTest, FollowsRedirectsToAnotherServer)
{
    const HttpServer other([](Exchange &exchange) { exchange.answer(404, "there"); });
    EXPECT_EQ(receive(redirectTo(other.address("/there"))), "there");
    EXPECT_EQ(other.targets(), std::vector<std::string> { "/there" });
}

TEST_F(CurlHttpClientTest, FollowsAChainOfRedirects)
{
    const HttpServer server([](Exchange &exchange) {
        if (exchange.target().size() > 10)
            exchange.answer(200, "there");
        else
            exchange.answer(302, "moved", "Location: " + exchange.target() + "x\r\n");
    });
    EXPECT_EQ(fetch(server.address()), "there");
    EXPECT_EQ(server.targets().size(), 11);
}

TEST_F(CurlHttpClientTest, GivesUpOnEndlessRedirects)
{
    const HttpServer loop(
        [](Exchange &exchange) { exchange.answer(302, "moved", "Location: /\r\n"); });
    EXPECT_EQ(fetch(loop.address()), std::nullopt);
    EXPECT_LE(loop.targets().size(), 30);
    const HttpServer chain([](Exchange &exchange) {
        exchange.answer(302, "moved", "Location: " + exchange.target() + "x\r\n");
    });
    EXPECT_EQ(fetch(chain.address()), std::nullopt);
    EXPECT_LE(chain.targets().size(), 30);
}

TEST_F(CurlHttpClientTest, DoesNotFollowForbiddenRedirects)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("secret");
    file.flush();
    const std::string path = file.fileName().toStdString();
    for (const auto &location : std::vector<std::string> {
             "file://" + path, "FILE://" + path, "file:" + path, "ftp://127.0.0.1/x",
             "data:image/png;base64,AAAA", "javascript:1", "mailto:x@example.com",
             "gopher://127.0.0.1/", "https://127.0.0.1:1/", "http://127.0.0.1:1/", "http://",
             "http://[::1", "//" })
        EXPECT_EQ(receive(redirectTo(location)), std::nullopt) << location;
}

TEST_F(CurlHttpClientTest, RefusesAddressesThatAreNotHttp)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("secret");
    file.flush();
    EXPECT_EQ(fetch("file://" + file.fileName().toStdString()), std::nullopt);
    EXPECT_EQ(fetch("data:text/plain,hello"), std::nullopt);
    EXPECT_EQ(fetch("favicon.ico"), std::nullopt);
}

TEST_F(CurlHttpClientTest, KeepsNoCookies)
{
    const HttpServer server([](Exchange &exchange) {
        exchange.answer(exchange.target() == "/" ? 302 : 200, "x",
                        "Set-Cookie: a=b; Path=/\r\nLocation: /there\r\n");
    });
    fetch(server.address());
    fetch(server.address("/again"));
    ASSERT_EQ(server.requests().size(), 3);
    for (const auto &head : server.requests())
        EXPECT_EQ(head.find("Cookie"), std::string::npos) << head;
}

class EnvironmentProxyTest : public CurlHttpClientTest
{
protected:
    void SetUp() override { qputenv("http_proxy", proxy.address().c_str()); }

    void TearDown() override { qunsetenv("http_proxy"); }

    HttpServer proxy { [](Exchange &exchange) { exchange.answer(200, "by proxy"); } };
};

TEST_F(EnvironmentProxyTest, IsUsed)
{
    EXPECT_EQ(fetch("http://example.com/favicon.ico"), "by proxy");
    EXPECT_EQ(proxy.targets(), std::vector<std::string> { "http://example.com/favicon.ico" });
}

TEST_F(EnvironmentProxyTest, GetsHostsInPunycode)
{
    for (const auto &[typed, sent] :
         { std::pair("b\xC3\xBC"
                     "cher.example",
                     "xn--bcher-kva.example"),
           std::pair("b%C3%BCcher.example", "xn--bcher-kva.example"),
           std::pair("EXAMPLE.com", "example.com"), std::pair("a_b.example", "a_b.example"),
           std::pair("[2001:db8::1]", "[2001:db8::1]") }) {
        EXPECT_EQ(fetch(std::string("http://") + typed + "/favicon.ico"), "by proxy") << typed;
        const std::string head = proxy.requests().back();
        EXPECT_NE(head.find(std::string("\r\nHost: ") + sent + "\r\n"), std::string::npos) << head;
        EXPECT_EQ(proxy.targets().back(), std::string("http://") + sent + "/favicon.ico");
    }
}

} // namespace
