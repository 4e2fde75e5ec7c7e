#pragma once

#include "platform/gio/GObjectPointer.h"
#include "platform/gio/StartupNotification.h"

#include <gio/gdesktopappinfo.h>

#include <optional>

/// Gives GIO the environment and the startup notification of a launch. Must outlive the launch.
class LaunchContext
{
public:
    /// A launch without startup notification.
    LaunchContext();

    /// Begins a startup notification if the application supports it (`StartupNotify`).
    explicit LaunchContext(GDesktopAppInfo *application);

    LaunchContext(const LaunchContext &) = delete;
    LaunchContext &operator=(const LaunchContext &) = delete;

    GAppLaunchContext *get() const { return m_context.get(); }

    bool hasNotification() const { return m_notification.has_value(); }

    /// Ends the startup notification of a failed launch.
    void complete();

private:
    struct Object;

    static GType type();
    static char *startupNotifyId(GAppLaunchContext *context, GAppInfo *application, GList *files);

    GObjectPointer<GAppLaunchContext> m_context;
    std::optional<StartupNotification> m_notification;
};
