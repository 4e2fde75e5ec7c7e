#include "platform/network/Download.h"

#include "platform/network/SystemProxy.h"

#include <optional>
#include <pthread.h>
#include <stop_token>
#include <string>
#include <utility>

namespace
{

/// None if the download failed.
std::optional<QByteArray> fetch(QUrl url, const Transfer::Options &options,
                                const std::stop_token &stop)
{
    constexpr int MaximumRedirects = 20;
    Transfer transfer(options, stop);
    const char *protocols = "http,https";
    for (int redirects = 0; redirects <= MaximumRedirects; ++redirects) {
        const std::string address = url.toEncoded().toStdString(); // with the host in Punycode
        auto response = transfer.get(address, protocols, SystemProxy::forAddress(address, stop));
        if (!response)
            return std::nullopt;
        if (response->redirect.empty())
            return std::move(response->body);
        if (url.scheme() == QLatin1String("https"))
            protocols = "https"; // never back to an unencrypted connection
        url = QUrl::fromEncoded(QByteArray::fromStdString(response->redirect));
    }
    return std::nullopt;
}

} // namespace

void Download::start(const QUrl &url, const Transfer::Options &options,
                     std::function<void(const QByteArray &body)> receive,
                     std::function<void()> onEnd)
{
    const auto run = [url, options, receive = std::move(receive),
                      onEnd = std::move(onEnd)](const std::stop_token &stop) {
        pthread_setname_np(pthread_self(), "network");
        const auto body = fetch(url, options, stop);
        if (body && !body->isEmpty() && !stop.stop_requested())
            receive(*body);
        onEnd();
    };
    m_thread = std::jthread(run);
}
