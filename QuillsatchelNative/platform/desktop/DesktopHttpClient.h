#pragma once

#include "platform/HttpClient.h"

#include <memory>

class MainQueue;

/// HTTP through the module `network`, which the first request loads.
class DesktopHttpClient final : public HttpClient
{
public:
    explicit DesktopHttpClient(MainQueue &mainQueue)
        : m_mainQueue(mainQueue)
    {
    }

    void get(const WebAddress &address,
             std::function<void(const QByteArray &body)> receive) override;

private:
    MainQueue &m_mainQueue;
    std::unique_ptr<HttpClient> m_module;
};
