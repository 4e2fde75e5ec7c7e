#include "platform/gio/StartupNotification.h"

#include "platform/gio/GObjectPointer.h"

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

// The library numbers its sequences in an unprotected global, on any thread.
std::mutex &libraryMutex()
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

/// The current X server time, from the event of a property change.
xcb_timestamp_t serverTime(xcb_connection_t *connection, int screen)
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
    constexpr std::uint8_t ErrorEvent = 0;
    while (const Event event { xcb_wait_for_event(connection) }) {
        if (event->response_type == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t *>(event.get())->time;
        if (event->response_type == ErrorEvent)
            break;
    }
    return XCB_CURRENT_TIME;
}

/// A round trip: closing the connection too early can lose requests.
void waitForServer(xcb_connection_t *connection)
{
    const CPointer<xcb_get_input_focus_reply_t, &std::free> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

/// One startup sequence and its connection.
class StartupNotification::Sequence
{
public:
    Sequence(Connection connection, int screen, GDesktopAppInfo *application);
    ~Sequence();

    Sequence(const Sequence &) = delete;
    Sequence &operator=(const Sequence &) = delete;

    std::string id() const { return sn_launcher_context_get_startup_id(m_launcher.get()); }

    void complete();

private:
    using Setter = void (*)(SnLauncherContext *launcher, const char *value);

    void describe(GDesktopAppInfo *application) const;
    void setIfPresent(Setter set, const char *value) const;

    Connection m_connection;
    CPointer<SnDisplay, &sn_display_unref> m_display;
    CPointer<SnLauncherContext, &sn_launcher_context_unref> m_launcher;
};

StartupNotification::Sequence::Sequence(Connection connection, int screen,
                                        GDesktopAppInfo *application)
    : m_connection(std::move(connection))
{
    const auto time = serverTime(m_connection.get(), screen);
    const auto *const program = g_app_info_get_executable(G_APP_INFO(application));
    const std::scoped_lock lock(libraryMutex());
    m_display.reset(sn_xcb_display_new(m_connection.get(), nullptr, nullptr));
    m_launcher.reset(sn_launcher_context_new(m_display.get(), screen));
    describe(application);
    sn_launcher_context_initiate(m_launcher.get(), "Quillsatchel",
                                 program ? program : "application", time);
    waitForServer(m_connection.get());
}

StartupNotification::Sequence::~Sequence()
{
    const std::scoped_lock lock(libraryMutex());
    m_launcher.reset();
    m_display.reset();
}

void StartupNotification::Sequence::describe(GDesktopAppInfo *application) const
{
    GAppInfo *const info = G_APP_INFO(application);
    const GText icon(g_desktop_app_info_get_locale_string(application, "Icon"));
    setIfPresent(&sn_launcher_context_set_name, g_app_info_get_display_name(info));
    setIfPresent(&sn_launcher_context_set_binary_name, g_app_info_get_executable(info));
    setIfPresent(&sn_launcher_context_set_icon_name, icon.get());
    setIfPresent(&sn_launcher_context_set_wmclass,
                 g_desktop_app_info_get_startup_wm_class(application));
}

void StartupNotification::Sequence::setIfPresent(Setter set, const char *value) const
{
    if (value)
        set(m_launcher.get(), value);
}

void StartupNotification::Sequence::complete()
{
    const std::scoped_lock lock(libraryMutex());
    sn_launcher_context_complete(m_launcher.get());
    waitForServer(m_connection.get());
}

std::optional<StartupNotification> StartupNotification::begin(GDesktopAppInfo *application)
{
    int screen = 0;
    Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()))
        return std::nullopt;
    return StartupNotification(
        std::make_unique<Sequence>(std::move(connection), screen, application));
}

StartupNotification::StartupNotification(std::unique_ptr<Sequence> sequence)
    : m_sequence(std::move(sequence))
{
}

StartupNotification::StartupNotification(StartupNotification &&) noexcept = default;
StartupNotification &StartupNotification::operator=(StartupNotification &&) noexcept = default;
StartupNotification::~StartupNotification() = default;

std::string StartupNotification::id() const
{
    return m_sequence->id();
}

void StartupNotification::complete()
{
    m_sequence->complete();
}
