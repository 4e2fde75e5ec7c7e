#include "platform/desktop/X11WindowSystem.h"

#include <QGuiApplication>
#include <QWindow>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>
#include <memory>
#include <string_view>

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
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = m_desktopAtom;
    message.data.data32[0] = AllDesktops;
    message.data.data32[1] = FromAnApplication;
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}
