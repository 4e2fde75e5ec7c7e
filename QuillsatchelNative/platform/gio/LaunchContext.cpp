#include "platform/gio/LaunchContext.h"

#include <gio/gdesktopappinfo.h>

/// What GIO knows us by.
struct LaunchContext::Object {
    GAppLaunchContext parent;
    LaunchContext *owner;
};

LaunchContext::LaunchContext()
    : m_context(static_cast<GAppLaunchContext *>(g_object_new(type(), nullptr)))
{
    reinterpret_cast<Object *>(get())->owner = this;
    // What announced our own start.
    for (const auto *const variable : { "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN" })
        g_app_launch_context_unsetenv(get(), variable);
}

GType LaunchContext::type()
{
    static const GType type = g_type_register_static_simple(
        G_TYPE_APP_LAUNCH_CONTEXT, "QuillsatchelLaunchContext", sizeof(GAppLaunchContextClass),
        [](gpointer classOfObjects, gpointer /*data*/) {
            auto *const functions = static_cast<GAppLaunchContextClass *>(classOfObjects);
            functions->get_startup_notify_id = &LaunchContext::begin;
            functions->launch_failed = &LaunchContext::fail;
        },
        sizeof(Object), nullptr, G_TYPE_FLAG_NONE);
    return type;
}

char *LaunchContext::begin(GAppLaunchContext *context, GAppInfo *application, GList * /*files*/)
{
    auto &notification = reinterpret_cast<Object *>(context)->owner->m_notification;
    notification = StartupNotification::begin(G_DESKTOP_APP_INFO(application));
    return notification ? g_strdup(notification->id().c_str()) : nullptr;
}

void LaunchContext::fail(GAppLaunchContext *context, const char * /*id*/)
{
    if (auto &notification = reinterpret_cast<Object *>(context)->owner->m_notification)
        notification->withdraw();
}
