#pragma once

#include "platform/network/Transfer.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <thread>

/// One GET request and its redirects, which run on a thread of their own. Call its functions and
/// destroy it on the thread that created it. The destructor cancels the request, but waits for a
/// running `receive`.
class Download
{
public:
    /// Call it once. On the download's thread, calls `receive` with the body, which may be
    /// truncated. Skips it if the download fails or is cancelled, or if the body is empty or larger
    /// than `HttpClient::MaximumBodySize`. Always calls `onEnd` last. Throws `std::system_error`,
    /// and calls neither, if no thread can be created.
    void start(const QUrl &url, const Transfer::Options &options,
               std::function<void(const QByteArray &body)> receive, std::function<void()> onEnd);

private:
    std::jthread m_thread;
};
