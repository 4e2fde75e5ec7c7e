// Owns an X selection, well-behaved or not:
//
//     selection_owner SELECTION BEHAVIOUR [FORMAT FILE]...
//
// Offers each FORMAT with the bytes of FILE, prints a line when it owns the selection, and runs
// until it is killed or another program takes the selection. BEHAVIOUR is one of
//
//     answers     sends the text in one property
//     incremental sends the text in chunks (INCR)
//     slow        sends one byte per 0.3 seconds (INCR)
//     lists       lists the formats, but sends none
//     silent      answers no request
//     saves       a clipboard manager that writes the clipboard's text to FILE on request

#include "platform/desktop/X11Connection.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using X11Connection::ReplyPointer;

constexpr std::size_t ChunkSize = 60'000;

struct Offer {
    xcb_atom_t format;
    std::string bytes;
};

class SelectionOwner
{
public:
    SelectionOwner(const char *selection, std::string_view behaviour)
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_window(xcb_generate_id(m_connection.get()))
        , m_selection(atom(selection))
        , m_behaviour(behaviour)
    {
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window,
                          X11Connection::root(m_connection.get()), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    }

    void offer(const char *format, const char *path)
    {
        m_path = path;
        std::ifstream file(path, std::ios::binary);
        m_offers.push_back({ atom(format), std::string(std::istreambuf_iterator<char>(file), {}) });
    }

    bool take()
    {
        xcb_set_selection_owner(m_connection.get(), m_window, m_selection, XCB_CURRENT_TIME);
        return X11Connection::selectionOwner(m_connection.get(), m_selection) == m_window;
    }

    void run()
    {
        while (const Event event { xcb_wait_for_event(m_connection.get()) }) {
            const int type = event->response_type & 0x7F;
            if (type == XCB_SELECTION_CLEAR)
                return;
            if (type == XCB_SELECTION_REQUEST && m_behaviour != "silent")
                answer(*reinterpret_cast<const xcb_selection_request_event_t *>(event.get()));
            if (type == XCB_SELECTION_NOTIFY)
                save();
            if (type == XCB_PROPERTY_NOTIFY)
                sendNextChunk(*reinterpret_cast<const xcb_property_notify_event_t *>(event.get()));
        }
    }

private:
    using Event = ReplyPointer<xcb_generic_event_t>;

    xcb_atom_t atom(std::string_view name) { return X11Connection::atom(m_connection.get(), name); }

    void answer(const xcb_selection_request_event_t &request)
    {
        const auto offer = std::ranges::find(m_offers, request.target, &Offer::format);
        if (request.target == atom("TARGETS")) {
            std::vector<xcb_atom_t> formats { request.target };
            std::ranges::transform(m_offers, std::back_inserter(formats), &Offer::format);
            set(request.requestor, request.property, XCB_ATOM_ATOM, 32,
                { reinterpret_cast<const char *>(formats.data()),
                  formats.size() * sizeof(xcb_atom_t) });
            notify(request, request.property);
        } else if (m_behaviour == "saves") {
            m_saving = request;
            xcb_convert_selection(m_connection.get(), m_window, atom("CLIPBOARD"),
                                  atom("UTF8_STRING"), atom("SAVED"), XCB_CURRENT_TIME);
            xcb_flush(m_connection.get());
        } else if (offer == m_offers.end()) {
            notify(request, XCB_ATOM_NONE);
        } else if (m_behaviour != "lists") {
            send(request, *offer);
        }
    }

    void save()
    {
        const auto cookie = xcb_get_property(m_connection.get(), 1, m_window, atom("SAVED"),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, ChunkSize);
        const ReplyPointer<xcb_get_property_reply_t> text(
            xcb_get_property_reply(m_connection.get(), cookie, nullptr));
        std::ofstream(m_path, std::ios::binary)
            .write(static_cast<const char *>(xcb_get_property_value(text.get())),
                   xcb_get_property_value_length(text.get()));
        notify(m_saving, m_saving.property);
    }

    void send(const xcb_selection_request_event_t &request, const Offer &offer)
    {
        if (m_behaviour == "answers") {
            set(request.requestor, request.property, offer.format, 8, offer.bytes);
        } else {
            const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(m_connection.get(), request.requestor, XCB_CW_EVENT_MASK,
                                         &events);
            m_remainder = offer;
            const auto size = static_cast<std::uint32_t>(offer.bytes.size());
            set(request.requestor, request.property, atom("INCR"), 32,
                { reinterpret_cast<const char *>(&size), sizeof(size) });
        }
        notify(request, request.property);
    }

    // The requestor deletes the property after reading a chunk. An empty chunk ends the transfer.
    void sendNextChunk(const xcb_property_notify_event_t &change)
    {
        if (!m_remainder || change.state != XCB_PROPERTY_DELETE)
            return;
        const bool isSlow = m_behaviour == "slow";
        if (isSlow)
            std::this_thread::sleep_for(300ms);
        const auto chunk = m_remainder->bytes.substr(0, isSlow ? 1 : ChunkSize);
        m_remainder->bytes.erase(0, chunk.size());
        set(change.window, change.atom, m_remainder->format, 8, chunk);
        if (chunk.empty())
            m_remainder.reset();
        xcb_flush(m_connection.get());
    }

    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint8_t bits,
             std::string_view bytes)
    {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, bits,
                            static_cast<std::uint32_t>(bytes.size() * 8 / bits), bytes.data());
    }

    void notify(const xcb_selection_request_event_t &request, xcb_atom_t property)
    {
        xcb_selection_notify_event_t event {};
        event.response_type = XCB_SELECTION_NOTIFY;
        event.time = request.time;
        event.requestor = request.requestor;
        event.selection = request.selection;
        event.target = request.target;
        event.property = property;
        xcb_send_event(m_connection.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char *>(&event));
        xcb_flush(m_connection.get());
    }

    X11Connection::OwnConnection m_connection = X11Connection::connectSeparately();
    xcb_window_t m_window;
    xcb_atom_t m_selection;
    std::string_view m_behaviour;
    std::vector<Offer> m_offers;
    const char *m_path = "";
    xcb_selection_request_event_t m_saving {};
    std::optional<Offer> m_remainder; // not yet sent
};

} // namespace

int main(int count, char **values)
{
    const std::span arguments(values, static_cast<std::size_t>(count));
    if (count < 3)
        return EXIT_FAILURE;
    SelectionOwner owner(arguments[1], arguments[2]);
    for (std::size_t next = 3; next + 1 < arguments.size(); next += 2)
        owner.offer(arguments[next], arguments[next + 1]);
    if (!owner.take())
        return EXIT_FAILURE;
    std::cout << "ready" << std::endl;
    owner.run();
}
