#pragma once

#include "platform/network/Transfer.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <thread>

/// One GET request and its redirects, on a separate thread. Use and destroy it on the thread that
/// created it. The destructor cancels the request, but waits for a running `receive`.
class Download
{
public:
    /// Call it once. On the download's thread, `receive` gets the body, possibly truncated, unless
    /// it is empty or exceeds the limit. `onEnd` is called last, also without a body. Throws
    /// `std::system_error`, and calls neither, if the system refuses a thread.
    void start(const QUrl &url, const Transfer::Options &options,
               std::function<void(const QByteArray &body)> receive, std::function<void()> onEnd);

private:
    std::jthread m_thread;
};
