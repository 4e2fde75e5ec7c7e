#include "platform/desktop/InstanceListener.h"

#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/StartupRequest.h"

#include <utility>

InstanceListener::InstanceListener(const SingleInstance &instance,
                                   std::function<void(const StartupToken &)> onStart)
    : m_instance(instance)
    , m_onStart(std::move(onStart))
{
    if (!instance.socket() || instance.socket()->descriptor() < 0)
        return;
    m_notifier.emplace(instance.socket()->descriptor(), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier,
                     [this] { receive(); });
}

// One message per event, so that a flood of them does not block other events.
void InstanceListener::receive() const
{
    const auto message = m_instance.socket()->receive();
    const auto token = message ? StartupRequest::decode(message->text) : std::nullopt;
    if (!token)
        return;
    m_onStart(*token);
    m_instance.socket()->answer(message->sender, std::string(StartupRequest::Answer));
}
