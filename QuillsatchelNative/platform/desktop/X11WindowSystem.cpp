#include "platform/desktop/X11WindowSystem.h"

#include "platform/desktop/RoundedRegion.h"
#include "platform/desktop/StartupEnvironment.h"
#include "platform/desktop/X11Connection.h"

#include <QSize>
#include <QWindow>
#include <xcb/xcb.h>

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace
{

constexpr std::uint32_t WindowManagerEvents =
    XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;

xcb_client_message_event_t clientMessage(const QWindow &window, xcb_atom_t type)
{
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = type;
    return message;
}

/// The X server time of the user's action, as given in the startup id, if any.
std::optional<xcb_timestamp_t> timestampOf(const std::string &startupID)
{
    constexpr std::string_view TimeMark = "_TIME";
    const auto mark = startupID.rfind(TimeMark);
    if (mark == std::string::npos)
        return std::nullopt;
    const auto digits = std::string_view(startupID).substr(mark + TimeMark.size());
    xcb_timestamp_t time = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
    const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
    return isNumber && time != XCB_CURRENT_TIME ? std::optional(time) : std::nullopt;
}

std::string quotedValue(std::string_view text)
{
    std::string result = "\"";
    for (const char each : text) {
        if (each == '"' || each == '\\')
            result += '\\';
        result += each;
    }
    return result + '"';
}

} // namespace

X11WindowSystem::X11WindowSystem()
    : m_connection(X11Connection::current())
{
    if (!m_connection)
        return;
    m_desktopAtom = X11Connection::atom(m_connection, "_NET_WM_DESKTOP");
    m_compositorCancellable = m_compositor.isOwned.sink([this](bool) { followCompositor(); });
    m_blurCancellable = m_blur.isSet.sink([this](bool) { followCompositor(); });
    m_windowManagerCancellable =
        m_windowManager.isSet.sink([this](bool isRunning) { hasWindowManager.set(isRunning); });
}

// A compositor that crashed leaves its property behind.
void X11WindowSystem::followCompositor()
{
    const bool isRunning = m_compositor.isOwned.get();
    isCompositing.set(isRunning);
    isBlurring.set(isRunning && m_blur.isSet.get());
}

void X11WindowSystem::showOnAllDesktops(QWindow &window)
{
    if (!m_connection)
        return;
    constexpr std::uint32_t AllDesktops = 0xFFFFFFFF;
    constexpr std::uint32_t SourceApplication = 1;
    auto message = clientMessage(window, m_desktopAtom);
    message.data.data32[0] = AllDesktops;
    message.data.data32[1] = SourceApplication;
    sendToRoot(message, WindowManagerEvents);
}

void X11WindowSystem::blurBehind(QWindow &window, const QSize &size, int radius)
{
    if (!m_connection)
        return;
    const qreal scale = window.devicePixelRatio();
    const int radiusInPixels = static_cast<int>(std::ceil(radius * scale));
    std::vector<std::uint32_t> cardinals;
    for (const QRect &rect : RoundedRegion::of(size * scale, radiusInPixels)) {
        for (const int number : { rect.x(), rect.y(), rect.width(), rect.height() })
            cardinals.push_back(static_cast<std::uint32_t>(number));
    }
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window.winId()), m_blur.atom(), XCB_ATOM_CARDINAL,
                        32, static_cast<std::uint32_t>(cardinals.size()), cardinals.data());
    xcb_flush(m_connection);
}

void X11WindowSystem::activate(QWindow &window, const StartupToken &token)
{
    if (!m_connection) {
        // Qt reads the token only from here, and removes it then.
        if (!token.activationToken.empty())
            qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token.activationToken));
        window.requestActivate();
        StartupEnvironment::clear();
        return;
    }
    // Wayland desktops give X11 programs the token instead of an id, or as both.
    const auto &id = token.startupID.empty() ? token.activationToken : token.startupID;
    requestActivation(window, id);
    if (!id.empty())
        endStartup(window, id);
}

// Qt would send the time of its last input event. That is often long ago, and the window manager
// would refuse it as focus stealing. Without a token, the request counts as a direct user action.
void X11WindowSystem::requestActivation(QWindow &window, const std::string &startupID)
{
    constexpr std::uint32_t SourceApplication = 1;
    constexpr std::uint32_t SourceUser = 2;
    const auto time = timestampOf(startupID);
    auto message = clientMessage(window, X11Connection::atom(m_connection, "_NET_ACTIVE_WINDOW"));
    message.data.data32[0] = time ? SourceApplication : SourceUser;
    message.data.data32[1] = time.value_or(XCB_CURRENT_TIME);
    sendToRoot(message, WindowManagerEvents);
}

// The startup notification protocol: zero-terminated text in messages of twenty bytes.
void X11WindowSystem::endStartup(const QWindow &window, const std::string &startupID)
{
    const std::string text = "remove: ID=" + quotedValue(startupID) + '\0';
    auto message =
        clientMessage(window, X11Connection::atom(m_connection, "_NET_STARTUP_INFO_BEGIN"));
    message.format = 8;
    constexpr std::size_t BytesPerMessage = sizeof(message.data.data8);
    for (std::size_t sent = 0; sent < text.size(); sent += BytesPerMessage) {
        message.data = {};
        text.copy(reinterpret_cast<char *>(message.data.data8), BytesPerMessage, sent);
        sendToRoot(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
        message.type = X11Connection::atom(m_connection, "_NET_STARTUP_INFO");
    }
}

void X11WindowSystem::sendToRoot(const xcb_client_message_event_t &message, std::uint32_t eventMask)
{
    xcb_send_event(m_connection, 0, X11Connection::root(m_connection), eventMask,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}
