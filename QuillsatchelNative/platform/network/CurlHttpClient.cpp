#include "platform/network/QtHttpClient.h"

#include "platform/network/NetworkThread.h"
#include "support/WebAddress.h"

#include <QUrl>

#include <utility>

namespace
{

bool isHttp(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

} // namespace

QtHttpClient::QtHttpClient(std::chrono::milliseconds silence)
    : m_silence(silence)
{
}

QtHttpClient::~QtHttpClient() = default;

void QtHttpClient::get(const WebAddress &address,
                       std::function<void(const QByteArray &body)> receive)
{
    const QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(address.absoluteString()));
    if (!url.isValid() || !isHttp(url))
        return;
    if (!m_thread)
        m_thread = std::make_unique<NetworkThread>(m_silence);
    ++m_requestsUnderWay;
    m_thread->get(url, std::move(receive), [this] {
        QMetaObject::invokeMethod(
            &m_mainThread, [this] { requestEnded(); }, Qt::QueuedConnection);
    });
}

void QtHttpClient::requestEnded()
{
    if (--m_requestsUnderWay == 0)
        m_thread.reset();
}
