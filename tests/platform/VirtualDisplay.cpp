#include "platform/VirtualDisplay.h"

#include <csignal>
#include <cstdlib>
#include <string_view>
#include <sys/prctl.h>

namespace
{

template <typename Reply>
using ReplyPointer = CPointer<Reply, &std::free>;

xcb_atom_t internAtom(xcb_connection_t *connection, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply->atom;
}

} // namespace

VirtualDisplay::VirtualDisplay()
{
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_server.start(QStringLiteral("Xvfb"),
                   { QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                     QStringLiteral("tcp"), QStringLiteral("-screen"), QStringLiteral("0"),
                     QStringLiteral("64x64x24") });
    m_server.waitForReadyRead();
    qputenv("DISPLAY", ":" + m_server.readLine().trimmed());
    m_connection.reset(xcb_connect(nullptr, nullptr));
    selectEvents();
}

VirtualDisplay::~VirtualDisplay()
{
    qunsetenv("DISPLAY");
    m_connection.reset();
    m_server.kill();
    m_server.waitForFinished();
}

void VirtualDisplay::selectEvents()
{
    m_begin = internAtom(m_connection.get(), "_NET_STARTUP_INFO_BEGIN");
    m_continue = internAtom(m_connection.get(), "_NET_STARTUP_INFO");
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.get(), root, XCB_CW_EVENT_MASK, &events);
    internAtom(m_connection.get(),
               "_NET_STARTUP_INFO"); // a round trip, so that events are selected
}

const std::vector<std::string> &VirtualDisplay::startupMessages()
{
    using Event = CPointer<xcb_generic_event_t, &std::free>;
    while (const Event event { xcb_poll_for_event(m_connection.get()) })
        if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE)
            receive(*reinterpret_cast<const xcb_client_message_event_t *>(event.get()));
    return m_messages;
}

void VirtualDisplay::receive(const xcb_client_message_event_t &message)
{
    if (message.type != m_begin && message.type != m_continue)
        return;
    auto &text = m_parts[message.window];
    if (message.type == m_begin)
        text.clear();
    for (const auto byte : message.data.data8) {
        if (byte == 0) {
            m_messages.push_back(text);
            return;
        }
        text += static_cast<char>(byte);
    }
}
