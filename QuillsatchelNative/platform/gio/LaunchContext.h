#pragma once

#include "platform/gio/GObjectPointer.h"
#include "platform/gio/StartupNotification.h"

#include <gio/gdesktopappinfo.h>

#include <optional>

/// What GIO wants to know of the desktop while it starts something: the environment to hand on, and
/// by what announcement the desktop knows it. Must outlive the start.
class LaunchContext
{
public:
    /// For what is announced to nobody.
    LaunchContext();

    /// Announces the application, if it is one of those that say when they are there.
    explicit LaunchContext(GDesktopAppInfo *application);

    LaunchContext(const LaunchContext &) = delete;
    LaunchContext &operator=(const LaunchContext &) = delete;

    GAppLaunchContext *get() const { return m_context.get(); }

    bool isAnnounced() const { return m_notification.has_value(); }

    /// The start has failed.
    void withdraw();

private:
    struct Object;

    static GType type();
    static char *announcement(GAppLaunchContext *context, GAppInfo *application, GList *files);

    GObjectPointer<GAppLaunchContext> m_context;
    std::optional<StartupNotification> m_notification;
};
