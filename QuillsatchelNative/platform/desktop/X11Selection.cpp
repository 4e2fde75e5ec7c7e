#include "platform/desktop/X11Selection.h"

#include "platform/desktop/X11Connection.h"

#include <QGuiApplication>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

using X11Connection::ReplyPointer;

X11Selection::X11Selection(std::string_view name)
    : m_connection(X11Connection::current())
{
    if (!m_connection)
        return;
    m_atom = X11Connection::atom(m_connection, name);
    watch();
    isOwned.set(hasOwner());
}

void X11Selection::watch()
{
    const auto *const xfixes = xcb_get_extension_data(m_connection, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present)
        return;
    // The server requires the version request before any other XFixes request.
    const ReplyPointer<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        m_connection, xcb_xfixes_query_version(m_connection, 1, 0), nullptr));
    if (!version)
        return;
    m_event = xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(m_connection, X11Connection::root(m_connection), m_atom,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    qGuiApp->installNativeEventFilter(this);
}

bool X11Selection::hasOwner() const
{
    return X11Connection::selectionOwner(m_connection, m_atom) != XCB_WINDOW_NONE;
}

bool X11Selection::nativeEventFilter(const QByteArray &eventType, void *message,
                                     qintptr * /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *const event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != m_event)
        return false;
    const auto *const change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t *>(event);
    if (change->selection == m_atom)
        isOwned.set(change->owner != XCB_WINDOW_NONE);
    return false;
}
