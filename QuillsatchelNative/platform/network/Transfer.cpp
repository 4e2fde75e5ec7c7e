#include "platform/network/NetworkThread.h"

#include "platform/network/Download.h"

#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <memory>
#include <utility>

namespace
{

class SystemProxies final : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return systemProxyForQuery(query);
    }
};

QNetworkRequest plainRequest(const QUrl &url, int silence)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(silence);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    return request;
}

} // namespace

NetworkThread::NetworkThread(std::chrono::milliseconds silence)
    : m_silence(static_cast<int>(silence.count()))
{
    setObjectName(QStringLiteral("network"));
    m_here.moveToThread(this);
    start();
}

NetworkThread::~NetworkThread()
{
    quit();
    wait();
}

void NetworkThread::get(const QUrl &url, std::function<void(const QByteArray &body)> receive,
                        std::function<void()> onEnd)
{
    const auto start = [this, url, receive = std::move(receive), onEnd = std::move(onEnd)] {
        auto *const reply = m_manager->get(plainRequest(url, m_silence));
        new Download(*reply, receive, onEnd);
    };
    QMetaObject::invokeMethod(&m_here, start, Qt::QueuedConnection);
}

void NetworkThread::run()
{
    QNetworkAccessManager manager;
    manager.setProxyFactory(std::make_unique<SystemProxies>().release());
    m_manager = &manager;
    exec();
}
