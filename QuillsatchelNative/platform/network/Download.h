#pragma once

#include "platform/network/Transfer.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <thread>

/// One GET with the redirects it meets, on a thread of its own. Used and destroyed by the thread
/// that made it; destroying it ends it at once, but for a `receive` that runs already.
class Download
{
public:
    /// Call it once. On the download's thread, `receive` gets the body, possibly truncated, unless
    /// it is empty or exceeds the limit. `onEnd` is called last, also without a body. Throws
    /// `std::system_error`, and calls neither, where no thread can be had.
    void start(const QUrl &url, const Transfer::Options &options,
               std::function<void(const QByteArray &body)> receive, std::function<void()> onEnd);

private:
    std::jthread m_thread;
};
