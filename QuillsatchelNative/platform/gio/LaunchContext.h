#pragma once

#include "platform/gio/CPointer.h"
#include "platform/gio/StartupNotification.h"

#include <gio/gio.h>

#include <optional>

/// What GIO wants to know of the desktop while it starts one application: the environment for it,
/// and how its start is announced. Must outlive the start.
class LaunchContext
{
public:
    LaunchContext();

    LaunchContext(const LaunchContext &) = delete;
    LaunchContext &operator=(const LaunchContext &) = delete;

    GAppLaunchContext *get() const { return m_context.get(); }

private:
    struct Object;

    static GType type();
    static char *begin(GAppLaunchContext *context, GAppInfo *application, GList *files);
    static void fail(GAppLaunchContext *context, const char *id);

    GObjectPointer<GAppLaunchContext> m_context;
    std::optional<StartupNotification> m_notification;
};
