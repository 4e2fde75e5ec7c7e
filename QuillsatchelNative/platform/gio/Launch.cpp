#include "platform/gio/Launch.h"

#include "platform/gio/DesktopEntry.h"
#include "platform/gio/LaunchContext.h"

#include <array>
#include <filesystem>
#include <unistd.h>

namespace Launch
{

namespace
{

using List = CPointer<GList, &g_list_free>;

// Without its own session the new program would end with the terminal that started us.
void startNewSession(gpointer /*data*/)
{
    setsid();
}

bool isActivatable(GDesktopAppInfo *application)
{
    const std::filesystem::path entry = g_desktop_app_info_get_filename(application);
    return g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE) &&
           entry.extension() == ".desktop" && g_dbus_is_name(entry.stem().c_str());
}

/// The session bus, set not to end this process when it disconnects.
GObjectPointer<GDBusConnection> sessionBus()
{
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

void spawn(GDesktopAppInfo *application, GList *addresses)
{
    LaunchContext context(application);
    const bool isStarted = g_desktop_app_info_launch_uris_as_manager(
        application, addresses, context.get(), G_SPAWN_SEARCH_PATH, &startNewSession, nullptr,
        nullptr, nullptr, nullptr);
    if (!isStarted)
        context.complete();
}

/// A GLib main context for this thread.
class EventLoop
{
public:
    EventLoop() { g_main_context_push_thread_default(m_context.get()); }

    EventLoop(const EventLoop &) = delete;
    EventLoop &operator=(const EventLoop &) = delete;

    ~EventLoop() { g_main_context_pop_thread_default(m_context.get()); }

    void iterate() const { g_main_context_iteration(m_context.get(), TRUE); }

private:
    CPointer<GMainContext, &g_main_context_unref> m_context { g_main_context_new() };
};

void activate(GDesktopAppInfo *application, GList *addresses, const std::stop_token &stop)
{
    const EventLoop eventLoop;
    LaunchContext context(application);
    const GObjectPointer<GCancellable> cancellable(g_cancellable_new());
    const std::stop_callback cancel(stop, [&] { g_cancellable_cancel(cancellable.get()); });
    GObjectPointer<GAsyncResult> answer;
    const auto receive = [](GObject *, GAsyncResult *result, gpointer destination) {
        static_cast<GObjectPointer<GAsyncResult> *>(destination)->reset(g_object_ref(result));
    };
    // GIO warns if a launch fails and its context has no id, so pass a context only with an id.
    g_app_info_launch_uris_async(G_APP_INFO(application), addresses,
                                 context.hasNotification() ? context.get() : nullptr,
                                 cancellable.get(), receive, &answer);
    while (!answer)
        eventLoop.iterate();
    const bool isStarted =
        g_app_info_launch_uris_finish(G_APP_INFO(application), answer.get(), nullptr);
    if (!isStarted && !stop.stop_requested())
        context.complete();
}

void launch(GDesktopAppInfo *application, GList *addresses, const std::stop_token &stop)
{
    const auto bus = sessionBus();
    if (bus && isActivatable(application))
        activate(application, addresses, stop);
    else
        spawn(application, addresses);
}

bool acceptsAddresses(GAppInfo *application)
{
    return g_app_info_supports_uris(application) || isActivatable(G_DESKTOP_APP_INFO(application));
}

/// Uses xdg-open, for desktops whose default handler GIO does not know.
void openWithXdgOpen(std::string &address)
{
    const LaunchContext context;
    const CPointer<char *, &g_strfreev> environment(
        g_app_launch_context_get_environment(context.get()));
    std::string program = "xdg-open";
    std::array<char *, 3> command { program.data(), address.data(), nullptr };
    g_spawn_async(nullptr, command.data(), environment.get(), G_SPAWN_SEARCH_PATH, &startNewSession,
                  nullptr, nullptr, nullptr);
}

} // namespace

void application(const std::string &path, const std::stop_token &stop)
{
    if (const auto entry = DesktopEntry::open(path))
        launch(entry->info(), nullptr, stop);
}

void address(std::string address, const std::string &scheme, const std::stop_token &stop)
{
    if (scheme.empty())
        return;
    const GObjectPointer<GAppInfo> application(
        g_app_info_get_default_for_uri_scheme(scheme.c_str()));
    if (!application || !acceptsAddresses(application.get())) {
        openWithXdgOpen(address);
        return;
    }
    const List addresses(g_list_append(nullptr, address.data()));
    launch(G_DESKTOP_APP_INFO(application.get()), addresses.get(), stop);
}

} // namespace Launch
