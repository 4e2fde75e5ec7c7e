#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

/// Connections to the X server: Qt's, and those of our own.
namespace X11Connection
{

/// None when Qt does not run on X11. Needs the QGuiApplication.
xcb_connection_t *current();

struct Disconnect {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};

using OwnConnection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// One more connection to the same server. It has an error where there is no server.
OwnConnection connectAgain();

xcb_window_t root(xcb_connection_t *connection);

/// The server's number for a name.
xcb_atom_t atom(xcb_connection_t *connection, std::string_view name);

/// The window that owns a selection; none without an owner.
xcb_window_t selectionOwner(xcb_connection_t *connection, xcb_atom_t selection);

/// Whether the window was made over this connection.
bool hasMade(xcb_connection_t *connection, xcb_window_t window);

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); } // NOLINT(*-no-malloc)
};

template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

} // namespace X11Connection
