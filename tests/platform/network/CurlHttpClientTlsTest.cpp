#include "platform/network/NetworkFixture.h"

#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>

namespace
{

/// A TLS web server with a self-signed certificate for 127.0.0.1. It runs on the thread that
/// creates it.
class TlsServer
{
public:
    explicit TlsServer(QByteArray answer)
        : m_answer(std::move(answer))
    {
        auto configuration = QSslConfiguration::defaultConfiguration();
        QFile certificate(QStringLiteral(TEST_CERTIFICATE));
        QFile key(QStringLiteral(TEST_CERTIFICATE_KEY));
        EXPECT_TRUE(certificate.open(QIODevice::ReadOnly));
        EXPECT_TRUE(key.open(QIODevice::ReadOnly));
        configuration.setLocalCertificate(QSslCertificate(&certificate));
        configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
        m_server.setSslConfiguration(configuration);
        QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server,
                         [this] { serve(*m_server.nextPendingConnection()); });
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    }

    std::string address(const std::string &host = "127.0.0.1") const
    {
        return "https://" + host + ":" + std::to_string(m_server.serverPort()) + "/";
    }

    int requests() const { return m_requests; }

private:
    void serve(QTcpSocket &socket)
    {
        QObject::connect(&socket, &QIODevice::readyRead, &m_server, [this, &socket] {
            if (!socket.peek(10'000).endsWith("\r\n\r\n"))
                return;
            ++m_requests;
            socket.readAll();
            socket.write(m_answer);
            socket.disconnectFromHost();
        });
    }

    QSslServer m_server;
    QByteArray m_answer;
    int m_requests = 0;
};

class CurlHttpClientTlsTest : public NetworkFixture
{
protected:
    CurlHttpClient trustingClient { mainQueue, { .caBundle = TEST_CERTIFICATE } };
    TlsServer server { "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody" };
};

TEST_F(CurlHttpClientTlsTest, AcceptsATrustedCertificate)
{
    EXPECT_EQ(Request(trustingClient, server.address()).body(), "body");
    EXPECT_EQ(server.requests(), 1);
}

TEST_F(CurlHttpClientTlsTest, SendsNoRequestToAnUntrustedServer)
{
    EXPECT_EQ(Request(client, server.address()).body(), std::nullopt);
    EXPECT_EQ(server.requests(), 0);
}

TEST_F(CurlHttpClientTlsTest, SendsNoRequestIfTheHostNameDiffers)
{
    EXPECT_EQ(Request(trustingClient, server.address("localhost")).body(), std::nullopt);
    EXPECT_EQ(server.requests(), 0);
}

TEST_F(CurlHttpClientTlsTest, FailsIfTheServerSpeaksNoTls)
{
    const HttpServer plain([](Exchange &exchange) { exchange.answer(200, "body"); });
    EXPECT_EQ(fetch("https://127.0.0.1:" + std::to_string(plain.port()) + "/"), std::nullopt);
}

TEST_F(CurlHttpClientTlsTest, FollowsARedirectToTls)
{
    const HttpServer plain([this](Exchange &exchange) {
        exchange.answer(301, "moved", "Location: " + server.address() + "\r\n");
    });
    EXPECT_EQ(Request(trustingClient, plain.address()).body(), "body");
}

TEST_F(CurlHttpClientTlsTest, DoesNotFollowARedirectFromHttpsToHttp)
{
    const HttpServer plain([](Exchange &exchange) { exchange.answer(200, "body"); });
    const TlsServer redirecting("HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " +
                                QByteArray::fromStdString(plain.address()) + "\r\n\r\n");
    EXPECT_EQ(Request(trustingClient, redirecting.address()).body(), std::nullopt);
    EXPECT_EQ(redirecting.requests(), 1);
    EXPECT_TRUE(plain.requests().empty());
}

} // namespace
