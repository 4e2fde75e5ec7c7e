#pragma once

#include "platform/HttpClient.h"
#include "support/WebAddress.h"

#include <functional>
#include <string>
#include <thread>
#include <vector>

/// Records requests. The test answers them, on another thread as the real client does.
class FakeHttpClient final : public HttpClient
{
public:
    struct Request {
        std::string address;
        std::function<void(const QByteArray &)> receive;
    };

    void get(const WebAddress &address, std::function<void(const QByteArray &)> receive) override
    {
        requests.push_back({ address.absoluteString(), std::move(receive) });
        if (onGet)
            onGet();
    }

    /// Passes `body` to the request's `receive` on another thread, and waits for it to return.
    void answer(std::size_t index, const QByteArray &body)
    {
        std::thread([this, index, &body] { requests.at(index).receive(body); }).join();
    }

    std::vector<Request> requests;
    std::function<void()> onGet;
};
