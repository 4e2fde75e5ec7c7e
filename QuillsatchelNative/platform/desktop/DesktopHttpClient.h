#pragma once

#include "platform/HttpClient.h"

#include <memory>

/// The web, through a module that is opened with the first request.
class DesktopHttpClient final : public HttpClient
{
public:
    void get(const WebAddress &address,
             std::function<void(const QByteArray &body)> receive) override;

private:
    std::unique_ptr<HttpClient> m_module;
};
