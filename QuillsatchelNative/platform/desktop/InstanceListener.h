#pragma once

#include "platform/StartupToken.h"

#include <QSocketNotifier>

#include <functional>
#include <optional>

class SingleInstance;

/// Hears of further starts while the application runs, and tells them that they may end.
class InstanceListener
{
public:
    /// `onStart` brings the panel forward with what the desktop gave the further start. Needs the
    /// QCoreApplication; `instance`, the first one, must outlive it.
    InstanceListener(const SingleInstance &instance,
                     std::function<void(const StartupToken &)> onStart);

private:
    void hear() const;

    const SingleInstance &m_instance;
    std::function<void(const StartupToken &)> m_onStart;
    std::optional<QSocketNotifier> m_notifier;
};
