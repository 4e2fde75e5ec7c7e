#pragma once

#include "platform/desktop/X11Connection.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>
#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

/// Reads an X selection, such as the clipboard, over a separate connection. Qt's clipboard waits
/// five seconds for each unanswered request; here one deadline covers all requests. Does not run
/// the event loop, so it cannot read a selection that this process owns.
class X11SelectionReader
{
public:
    /// The timeout begins now.
    X11SelectionReader(std::string_view selection, std::chrono::milliseconds timeout);

    /// The formats that the owner offers; empty without an owner or an answer in time.
    QStringList formats();

    /// The selection in one of its formats; none if it does not arrive completely in time.
    std::optional<QByteArray> data(const QString &format);

    /// Requests a conversion without waiting for the answer.
    void request(std::string_view target);

    /// Whether the last request was answered or refused. Does not wait.
    bool hasAnswer();

    /// Readable when an answer may have arrived.
    int descriptor() const { return xcb_get_file_descriptor(m_connection.get()); }

private:
    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        int bits = 0; // of each item: 8, 16 or 32
        QByteArray bytes;
    };

    using EventFilter = std::function<bool(const xcb_generic_event_t &)>;

    std::optional<Property> property(std::string_view target);
    std::optional<QByteArray> incrementalData();
    std::optional<Property> takeProperty();
    bool waitForEvent(const EventFilter &isWanted);
    bool takeEvent(const EventFilter &isWanted);
    bool waitForInput() const;
    QString nameOf(xcb_get_atom_name_cookie_t cookie);

    X11Connection::OwnConnection m_connection;
    QDeadlineTimer m_deadline;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
};
