#pragma once

#include "platform/HttpClient.h"
#include "platform/network/Download.h"
#include "platform/network/Transfer.h"

#include <list>
#include <memory>

class MainQueue;

/// HTTP and HTTPS through libcurl and the system's proxies. No cookies, stored passwords or cache.
/// Each request uses a thread until it ends.
///
/// A body can be shorter than its Content-Length. No body is delivered from a server whose
/// certificate is not trusted, or after a redirect from https to http or to another protocol.
class CurlHttpClient final : public HttpClient
{
public:
    explicit CurlHttpClient(MainQueue &mainQueue, Transfer::Options options = {});

    CurlHttpClient(const CurlHttpClient &) = delete;
    CurlHttpClient &operator=(const CurlHttpClient &) = delete;

    /// Cancels all requests. Waits for a running `receive`; calls none later.
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
