#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <functional>

class WebAddress;

/// Fetches small things from the web.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// In bytes.
    static constexpr qint64 MaximumBodySize = qint64(8) * 1024 * 1024;

    /// A plain GET that follows redirects. `receive` gets the body, for any status, on a thread of
    /// the client. It may be cut off where the connection broke. `receive` is never called for an
    /// empty body, one larger than `MaximumBodySize`, or one that takes longer than 60 seconds.
    /// Main thread only.
    virtual void get(const WebAddress &address,
                     std::function<void(const QByteArray &body)> receive) = 0;
};
