#include "platform/desktop/X11SelectionReader.h"

#include <xcb/xcb.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <poll.h>
#include <span>
#include <vector>

using X11Connection::ReplyPointer;

namespace
{

constexpr int AtomBits = 32;

bool isAnswer(const xcb_generic_event_t &event)
{
    return (event.response_type & 0x7F) == XCB_SELECTION_NOTIFY;
}

} // namespace

X11SelectionReader::X11SelectionReader(std::string_view selection,
                                       std::chrono::milliseconds timeout)
    : m_connection(X11Connection::connectSeparately())
    , m_deadline(timeout)
{
    if (xcb_connection_has_error(m_connection.get()) != 0)
        return;
    m_selection = X11Connection::atom(m_connection.get(), selection);
    m_property = X11Connection::atom(m_connection.get(), "QUILLSATCHEL_SELECTION");
    m_window = xcb_generate_id(m_connection.get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window,
                      X11Connection::root(m_connection.get()), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

QStringList X11SelectionReader::formats()
{
    const auto list = property("TARGETS");
    if (!list || list->bits != AtomBits)
        return {};
    const std::span atoms(reinterpret_cast<const xcb_atom_t *>(list->bytes.constData()),
                          static_cast<std::size_t>(list->bytes.size()) / sizeof(xcb_atom_t));
    std::vector<xcb_get_atom_name_cookie_t> cookies;
    for (const auto atom : atoms) // one round trip for all names
        cookies.push_back(xcb_get_atom_name(m_connection.get(), atom));
    QStringList names;
    for (const auto cookie : cookies)
        names.append(nameOf(cookie));
    return names;
}

std::optional<QByteArray> X11SelectionReader::data(const QString &format)
{
    const auto content = property(format.toStdString());
    if (!content)
        return std::nullopt;
    return content->type == X11Connection::atom(m_connection.get(), "INCR") ? incrementalData()
                                                                            : content->bytes;
}

void X11SelectionReader::request(std::string_view target)
{
    xcb_convert_selection(m_connection.get(), m_window, m_selection,
                          X11Connection::atom(m_connection.get(), target), m_property,
                          XCB_CURRENT_TIME);
    xcb_flush(m_connection.get());
}

bool X11SelectionReader::hasAnswer()
{
    return takeEvent(isAnswer);
}

std::optional<X11SelectionReader::Property> X11SelectionReader::property(std::string_view target)
{
    xcb_atom_t property = XCB_ATOM_NONE;
    request(target);
    const bool isAnswered = waitForEvent([&property](const xcb_generic_event_t &event) {
        property = reinterpret_cast<const xcb_selection_notify_event_t &>(event).property;
        return isAnswer(event);
    });
    return isAnswered && property == m_property ? takeProperty() : std::nullopt;
}

// An INCR transfer: reading a chunk requests the next one; an empty chunk is the last.
std::optional<QByteArray> X11SelectionReader::incrementalData()
{
    QByteArray whole;
    const auto isNextChunk = [this](const xcb_generic_event_t &event) {
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        return (event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY && change.atom == m_property &&
               change.state == XCB_PROPERTY_NEW_VALUE;
    };
    while (!m_deadline.hasExpired() && waitForEvent(isNextChunk)) {
        const auto chunk = takeProperty();
        if (!chunk)
            return std::nullopt;
        if (chunk->bytes.isEmpty())
            return whole;
        whole += chunk->bytes;
    }
    return std::nullopt;
}

std::optional<X11SelectionReader::Property> X11SelectionReader::takeProperty()
{
    constexpr auto Everything = std::numeric_limits<std::uint32_t>::max() / 4;
    const auto cookie = xcb_get_property(m_connection.get(), 1, m_window, m_property,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, Everything);
    const ReplyPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return std::nullopt;
    const auto *const bytes = static_cast<const char *>(xcb_get_property_value(reply.get()));
    return Property { reply->type,
                      reply->format,
                      { bytes, xcb_get_property_value_length(reply.get()) } };
}

bool X11SelectionReader::waitForEvent(const EventFilter &isWanted)
{
    do {
        if (takeEvent(isWanted))
            return true;
    } while (waitForInput());
    return false;
}

bool X11SelectionReader::takeEvent(const EventFilter &isWanted)
{
    using Event = ReplyPointer<xcb_generic_event_t>;
    while (const Event event { xcb_poll_for_event(m_connection.get()) }) {
        if (isWanted(*event))
            return true;
    }
    return false;
}

/// False if the deadline has passed or the connection is lost.
bool X11SelectionReader::waitForInput() const
{
    const auto remaining = static_cast<int>(m_deadline.remainingTime());
    if (remaining <= 0 || xcb_connection_has_error(m_connection.get()) != 0)
        return false;
    pollfd input { .fd = xcb_get_file_descriptor(m_connection.get()),
                   .events = POLLIN,
                   .revents = 0 };
    return poll(&input, 1, remaining) >= 0 || errno == EINTR;
}

QString X11SelectionReader::nameOf(xcb_get_atom_name_cookie_t cookie)
{
    const ReplyPointer<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    return QString::fromLatin1(xcb_get_atom_name_name(reply.get()),
                               xcb_get_atom_name_name_length(reply.get()));
}
