#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <functional>

class WebAddress;

/// Downloads small files.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// In bytes.
    static constexpr qint64 MaximumBodySize = qint64(8) * 1024 * 1024;

    /// Sends a GET request and follows redirects. Calls `receive` on a thread of the client with
    /// the body of a response with any status, truncated if the connection breaks. Never calls
    /// `receive` for an empty body, one over `MaximumBodySize`, or one that takes longer than 60
    /// seconds. Main thread only.
    virtual void get(const WebAddress &address,
                     std::function<void(const QByteArray &body)> receive) = 0;
};
