#pragma once

#include <QByteArray>

#include <functional>

class WebAddress;

/// Fetches small things from the web.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// A plain GET that follows redirects. `receive` gets the whole body, whatever the status, on
    /// a thread of the client's; never, if none arrives, or one of more than 8 MiB. 60 seconds of
    /// silence end it. Main thread only.
    virtual void get(const WebAddress &address,
                     std::function<void(const QByteArray &body)> receive) = 0;
};
