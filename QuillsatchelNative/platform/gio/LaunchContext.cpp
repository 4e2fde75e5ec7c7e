#include "platform/gio/LaunchContext.h"

/// The GObject, which refers to its owner.
struct LaunchContext::Object {
    GAppLaunchContext parent;
    const LaunchContext *owner;
};

LaunchContext::LaunchContext()
    : m_context(static_cast<GAppLaunchContext *>(g_object_new(type(), nullptr)))
{
    reinterpret_cast<Object *>(get())->owner = this;
    // They may still hold the tokens of this program's own launch.
    for (const auto *const variable : { "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN" })
        g_app_launch_context_unsetenv(get(), variable);
}

LaunchContext::LaunchContext(GDesktopAppInfo *application)
    : LaunchContext()
{
    if (g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY))
        m_notification = StartupNotification::begin(application);
}

void LaunchContext::complete()
{
    if (m_notification)
        m_notification->complete();
}

GType LaunchContext::type()
{
    static const GType type = g_type_register_static_simple(
        G_TYPE_APP_LAUNCH_CONTEXT, "QuillsatchelLaunchContext", sizeof(GAppLaunchContextClass),
        [](gpointer classOfObjects, gpointer /*data*/) {
            static_cast<GAppLaunchContextClass *>(classOfObjects)->get_startup_notify_id =
                &LaunchContext::startupNotifyId;
        },
        sizeof(Object), nullptr, G_TYPE_FLAG_NONE);
    return type;
}

char *LaunchContext::startupNotifyId(GAppLaunchContext *context, GAppInfo * /*application*/,
                                     GList * /*files*/)
{
    const auto &notification = reinterpret_cast<Object *>(context)->owner->m_notification;
    return notification ? g_strdup(notification->id().c_str()) : nullptr;
}
