#include "platform/desktop/X11WindowSystem.h"

#include "platform/desktop/StartupEnvironment.h"

#include <QGuiApplication>
#include <QWindow>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <charconv>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

namespace
{

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); } // NOLINT(*-no-malloc)
};

template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

xcb_atom_t internAtom(xcb_connection_t *connection, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

constexpr std::uint32_t ToWindowManager =
    XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;

xcb_client_message_event_t messageAbout(const QWindow &window, xcb_atom_t type)
{
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = type;
    return message;
}

/// The display's time at which the user asked for the start; none if the id does not tell.
std::optional<xcb_timestamp_t> timeOf(const std::string &startupID)
{
    constexpr std::string_view Mark = "_TIME";
    const auto mark = startupID.rfind(Mark);
    if (mark == std::string::npos)
        return std::nullopt;
    const auto digits = std::string_view(startupID).substr(mark + Mark.size());
    xcb_timestamp_t time = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
    const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
    return isNumber && time != XCB_CURRENT_TIME ? std::optional(time) : std::nullopt;
}

std::string quoted(std::string_view text)
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
{
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    m_connection = x11 ? x11->connection() : nullptr;
    if (!m_connection)
        return;
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_desktopAtom = internAtom(m_connection, "_NET_WM_DESKTOP");
    m_compositorSelection = internAtom(m_connection, "_NET_WM_CM_S0");
    watchCompositor();
    isCompositing.set(hasCompositor());
}

void X11WindowSystem::watchCompositor()
{
    const auto *const xfixes = xcb_get_extension_data(m_connection, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present)
        return;
    // The server answers no other XFixes request before it was told the version.
    const ReplyPointer<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        m_connection, xcb_xfixes_query_version(m_connection, 1, 0), nullptr));
    if (!version)
        return;
    m_selectionEvent = xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(m_connection, m_root, m_compositorSelection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    qGuiApp->installNativeEventFilter(this);
}

bool X11WindowSystem::hasCompositor() const
{
    const auto cookie = xcb_get_selection_owner(m_connection, m_compositorSelection);
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool X11WindowSystem::nativeEventFilter(const QByteArray &eventType, void *message,
                                        qintptr * /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *const event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != m_selectionEvent)
        return false;
    const auto *const change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t *>(event);
    if (change->selection == m_compositorSelection)
        isCompositing.set(change->owner != XCB_WINDOW_NONE);
    return false;
}

void X11WindowSystem::showOnAllDesktops(QWindow &window)
{
    if (!m_connection)
        return;
    constexpr std::uint32_t AllDesktops = 0xFFFFFFFF;
    constexpr std::uint32_t FromAnApplication = 1;
    auto message = messageAbout(window, m_desktopAtom);
    message.data.data32[0] = AllDesktops;
    message.data.data32[1] = FromAnApplication;
    sendToRoot(message, ToWindowManager);
}

void X11WindowSystem::activate(QWindow &window, const StartupToken &token)
{
    if (!m_connection) {
        // Qt has no other way to take it, and removes it once it has.
        if (!token.activationToken.empty())
            qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token.activationToken));
        window.requestActivate();
        StartupEnvironment::clear();
        return;
    }
    // Desktops on Wayland give X11 programs the token in place of an id, or both alike.
    const auto &id = token.startupID.empty() ? token.activationToken : token.startupID;
    requestActivation(window, id);
    if (!id.empty())
        endStartup(window, id);
}

// Qt itself asks with the time of the last input it had: that is often long ago, and the window
// manager would see a program that wants to take the keyboard from a user who is busy elsewhere.
void X11WindowSystem::requestActivation(QWindow &window, const std::string &startupID)
{
    constexpr std::uint32_t FromAnApplication = 1;
    constexpr std::uint32_t FromTheUser = 2;
    const auto time = timeOf(startupID);
    auto message = messageAbout(window, internAtom(m_connection, "_NET_ACTIVE_WINDOW"));
    message.data.data32[0] = time ? FromAnApplication : FromTheUser;
    message.data.data32[1] = time.value_or(XCB_CURRENT_TIME);
    sendToRoot(message, ToWindowManager);
}

// The start-up notification protocol: a text, ended by a zero, twenty bytes a message.
void X11WindowSystem::endStartup(const QWindow &window, const std::string &startupID)
{
    const std::string text = "remove: ID=" + quoted(startupID) + '\0';
    auto message = messageAbout(window, internAtom(m_connection, "_NET_STARTUP_INFO_BEGIN"));
    message.format = 8;
    constexpr std::size_t Room = sizeof(message.data.data8);
    for (std::size_t sent = 0; sent < text.size(); sent += Room) {
        message.data = {};
        text.copy(reinterpret_cast<char *>(message.data.data8), Room, sent);
        sendToRoot(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
        message.type = internAtom(m_connection, "_NET_STARTUP_INFO");
    }
}

void X11WindowSystem::sendToRoot(const xcb_client_message_event_t &message, std::uint32_t eventMask)
{
    xcb_send_event(m_connection, 0, m_root, eventMask, reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}
