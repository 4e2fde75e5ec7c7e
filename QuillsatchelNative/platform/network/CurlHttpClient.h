#pragma once

#include "platform/HttpClient.h"

#include <QObject>

#include <chrono>
#include <memory>

class NetworkThread;

/// The web through Qt's network classes, on a thread of its own that is there only while requests
/// are under way. Http and https only, through the proxies that the system is set to; no cookies,
/// no stored passwords, no cache.
///
/// A whole body is one after which nothing was wrong but the status: of a connection that broke,
/// that cannot be trusted, or was redirected to where it may not go, nothing is received.
class QtHttpClient final : public HttpClient
{
public:
    /// Ends a request after `silence`, in which nothing of its body arrived.
    explicit QtHttpClient(std::chrono::milliseconds silence = std::chrono::seconds(60));

    QtHttpClient(const QtHttpClient &) = delete;
    QtHttpClient &operator=(const QtHttpClient &) = delete;

    /// Ends what is under way; once it returns, nothing is received any more.
    ~QtHttpClient() override;

    void get(const WebAddress &address,
             std::function<void(const QByteArray &body)> receive) override;

private:
    void requestEnded();

    std::chrono::milliseconds m_silence;
    int m_requestsUnderWay = 0;
    QObject m_mainThread; // where the thread's messages arrive, which go when this does
    std::unique_ptr<NetworkThread> m_thread; // null while no request is under way
};
