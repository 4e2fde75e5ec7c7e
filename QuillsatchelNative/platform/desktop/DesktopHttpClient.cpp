#include "platform/desktop/DesktopHttpClient.h"

#include "platform/desktop/Module.h"

#include <utility>

void DesktopHttpClient::get(const WebAddress &address,
                            std::function<void(const QByteArray &body)> receive)
{
    if (!m_module)
        m_module = Module::make<HttpClient>("network", m_mainQueue);
    if (m_module)
        m_module->get(address, std::move(receive));
}
