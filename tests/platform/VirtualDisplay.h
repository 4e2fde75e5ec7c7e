#pragma once

#include "support/CPointer.h"

#include <QProcess>
#include <xcb/xcb.h>

#include <map>
#include <string>
#include <vector>

/// A private X server, which DISPLAY names while it exists.
class VirtualDisplay
{
public:
    VirtualDisplay();

    VirtualDisplay(const VirtualDisplay &) = delete;
    VirtualDisplay &operator=(const VirtualDisplay &) = delete;

    ~VirtualDisplay();

    /// The startup notification messages so far, in order.
    const std::vector<std::string> &startupMessages();

private:
    void selectEvents();
    void receive(const xcb_client_message_event_t &message);

    QProcess m_server;
    CPointer<xcb_connection_t, &xcb_disconnect> m_connection;
    xcb_atom_t m_begin = XCB_ATOM_NONE;
    xcb_atom_t m_continue = XCB_ATOM_NONE;
    std::map<xcb_window_t, std::string> m_parts; // by sender
    std::vector<std::string> m_messages;
};
