#include "platform/network/CurlHttpClient.h"

#include "platform/MainQueue.h"
#include "support/WebAddress.h"

#include <QUrl>

#include <system_error>
#include <utility>

CurlHttpClient::CurlHttpClient(MainQueue &mainQueue, Transfer::Options options)
    : m_mainQueue(mainQueue)
    , m_options(std::move(options))
{
}

CurlHttpClient::~CurlHttpClient() = default;

void CurlHttpClient::get(const WebAddress &address,
                         std::function<void(const QByteArray &body)> receive)
{
    const auto url = QUrl::fromEncoded(QByteArray::fromStdString(address.absoluteString()));
    const auto download = m_downloads->emplace(m_downloads->end());
    const auto remove = [downloads = std::weak_ptr(m_downloads), download] {
        if (const auto current = downloads.lock())
            current->erase(download);
    };
    const auto onEnd = [&mainQueue = m_mainQueue, remove] { mainQueue.async(remove); };
    try {
        download->start(url, m_options, std::move(receive), onEnd);
    } catch (const std::system_error &) {
        m_downloads->erase(download);
    }
}
