#include "platform/gio/StartupNotification.h"

#include "platform/gio/CPointer.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <libsn/sn.h>
#include <mutex>
#include <utility>

namespace
{

using Connection = CPointer<xcb_connection_t, &xcb_disconnect>;
using Event = CPointer<xcb_generic_event_t, &std::free>;

// The library counts its announcements for itself, on whatever thread.
std::mutex &libraryLock()
{
    static std::mutex lock;
    return lock;
}

xcb_window_t rootOf(xcb_connection_t *connection, int screen)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0; --screen)
        xcb_screen_next(&screens);
    return screens.data->root;
}

/// The display's own time, which it stamps on every change of a property.
xcb_timestamp_t displayTime(xcb_connection_t *connection, int screen)
{
    const auto window = xcb_generate_id(connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, rootOf(connection, screen), 0, 0, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, 0, nullptr);
    xcb_destroy_window(connection, window);
    xcb_flush(connection);
    constexpr std::uint8_t AnError = 0;
    while (const Event event { xcb_wait_for_event(connection) }) {
        if (event->response_type == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t *>(event.get())->time;
        if (event->response_type == AnError)
            break;
    }
    return XCB_CURRENT_TIME;
}

const char *orEmpty(const char *text)
{
    return text ? text : "";
}

} // namespace

/// One announcement. What is declared first goes last.
struct StartupNotification::Sequence {
    Connection connection;
    CPointer<SnDisplay, &sn_display_unref> display;
    CPointer<SnLauncherContext, &sn_launcher_context_unref> launcher;

    void describe(GDesktopAppInfo *application) const
    {
        GAppInfo *const info = G_APP_INFO(application);
        sn_launcher_context_set_name(launcher.get(), g_app_info_get_display_name(info));
        sn_launcher_context_set_binary_name(launcher.get(),
                                            orEmpty(g_app_info_get_executable(info)));
        sn_launcher_context_set_extra_property(
            launcher.get(), "APPLICATION_ID",
            orEmpty(g_desktop_app_info_get_filename(application)));
        const GText icon(g_desktop_app_info_get_locale_string(application, "Icon"));
        sn_launcher_context_set_icon_name(launcher.get(), orEmpty(icon.get()));
        if (const auto *const windowClass = g_desktop_app_info_get_startup_wm_class(application))
            sn_launcher_context_set_wmclass(launcher.get(), windowClass);
    }
};

void StartupNotification::Delete::operator()(Sequence *sequence) const
{
    const std::scoped_lock lock(libraryLock());
    std::default_delete<Sequence>()(sequence);
}

std::optional<StartupNotification> StartupNotification::begin(GDesktopAppInfo *application)
{
    int screen = 0;
    Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()))
        return std::nullopt;
    const auto time = displayTime(connection.get(), screen);
    std::unique_ptr<Sequence, Delete> sequence(
        std::make_unique<Sequence>(Sequence { std::move(connection), {}, {} }).release());
    const std::scoped_lock lock(libraryLock());
    sequence->display.reset(sn_xcb_display_new(sequence->connection.get(), nullptr, nullptr));
    sequence->launcher.reset(sn_launcher_context_new(sequence->display.get(), screen));
    sequence->describe(application);
    sn_launcher_context_initiate(sequence->launcher.get(), "Quillsatchel",
                                 g_app_info_get_executable(G_APP_INFO(application)), time);
    return StartupNotification(std::move(sequence));
}

StartupNotification::StartupNotification(std::unique_ptr<Sequence, Delete> sequence)
    : m_sequence(std::move(sequence))
    , m_id(sn_launcher_context_get_startup_id(m_sequence->launcher.get()))
{
}

void StartupNotification::withdraw()
{
    const std::scoped_lock lock(libraryLock());
    sn_launcher_context_complete(m_sequence->launcher.get());
}
