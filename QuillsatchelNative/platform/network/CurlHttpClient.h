#pragma once

#include "platform/HttpClient.h"
#include "platform/network/Download.h"
#include "platform/network/Transfer.h"

#include <list>
#include <memory>

class MainQueue;

/// The web through libcurl, http and https only, by way of the proxies that the system is set to.
/// No cookies, no stored passwords, no cache. A request has a thread of its own while it is under
/// way; at rest there is none.
///
/// A body may be shorter than announced. Nothing is received over a connection that cannot be
/// trusted, nor after a redirect to where it must not go.
class CurlHttpClient final : public HttpClient
{
public:
    explicit CurlHttpClient(MainQueue &mainQueue, Transfer::Options options = {});

    CurlHttpClient(const CurlHttpClient &) = delete;
    CurlHttpClient &operator=(const CurlHttpClient &) = delete;

    /// Ends what is under way. A `receive` that runs already is waited for; none is called later.
    ~CurlHttpClient() override;

    void get(const WebAddress &address,
             std::function<void(const QByteArray &body)> receive) override;

private:
    MainQueue &m_mainQueue;
    Transfer::Options m_options;
    /// Removed on the main thread when they end. Shared so that a removal still in the queue can
    /// tell that the client is gone; only the main thread holds references.
    std::shared_ptr<std::list<Download>> m_downloads = std::make_shared<std::list<Download>>();
};
