#include "platform/desktop/X11RootProperty.h"

#include "platform/desktop/X11Connection.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

using X11Connection::ReplyPointer;

X11RootProperty::X11RootProperty(std::string_view name)
    : m_connection(X11Connection::current())
{
    if (!m_connection)
        return;
    m_atom = X11Connection::atom(m_connection, name);
    watch();
    isSet.set(exists());
}

// Qt shares this connection's event mask, so the events that Qt selected must stay in it.
void X11RootProperty::watch()
{
    const auto root = X11Connection::root(m_connection);
    const ReplyPointer<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, root),
                                        nullptr));
    if (!attributes)
        return;
    const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &events);
    qGuiApp->installNativeEventFilter(this);
}

bool X11RootProperty::exists() const
{
    const auto cookie = xcb_get_property(m_connection, 0, X11Connection::root(m_connection), m_atom,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const ReplyPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

bool X11RootProperty::nativeEventFilter(const QByteArray &eventType, void *message,
                                        qintptr * /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *const event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto *const change = reinterpret_cast<const xcb_property_notify_event_t *>(event);
    if (change->atom == m_atom && change->window == X11Connection::root(m_connection))
        isSet.set(change->state == XCB_PROPERTY_NEW_VALUE);
    return false;
}
