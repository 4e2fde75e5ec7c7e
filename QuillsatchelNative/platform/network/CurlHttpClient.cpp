#include "platform/network/CurlHttpClient.h"

#include "support/WebAddress.h"

#include <QUrl>

#include <utility>

CurlHttpClient::CurlHttpClient(Transfer::Options options)
    : m_options(std::move(options))
{
}

CurlHttpClient::~CurlHttpClient() = default;

void CurlHttpClient::get(const WebAddress &address,
                         std::function<void(const QByteArray &body)> receive)
{
    const auto url = QUrl::fromEncoded(QByteArray::fromStdString(address.absoluteString()));
    const auto place = m_downloads.emplace(m_downloads.end());
    place->start(url, m_options, std::move(receive), [this, place] {
        QMetaObject::invokeMethod(
            &m_mainThread, [this, place] { m_downloads.erase(place); }, Qt::QueuedConnection);
    });
}
