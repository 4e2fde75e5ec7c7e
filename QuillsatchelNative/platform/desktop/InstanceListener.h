#pragma once

#include "platform/StartupToken.h"

#include <QSocketNotifier>

#include <functional>
#include <optional>

class SingleInstance;

/// Receives the requests of later starts, and answers them so that they exit.
class InstanceListener
{
public:
    /// `onStart` gets the later start's token, and must show the panel. `instance` is the first one
    /// and must outlive this object. Needs the QCoreApplication.
    InstanceListener(const SingleInstance &instance,
                     std::function<void(const StartupToken &)> onStart);

private:
    void receive() const;

    const SingleInstance &m_instance;
    std::function<void(const StartupToken &)> m_onStart;
    std::optional<QSocketNotifier> m_notifier;
};
