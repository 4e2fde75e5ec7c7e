#include "platform/network/CurlHttpClient.h"

#include "support/WebAddress.h"

#include <QUrl>

#include <system_error>
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
    const auto onEnd = [this, place] {
        QMetaObject::invokeMethod(
            &m_mainThread, [this, place] { m_downloads.erase(place); }, Qt::QueuedConnection);
    };
    try {
        place->start(url, m_options, std::move(receive), onEnd);
    } catch (const std::system_error &) {
        m_downloads.erase(place);
    }
}
