#pragma once

#include "support/CPointer.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <string_view>

/// Qt's connection to the X server, and separate ones.
namespace X11Connection
{

/// Qt's connection; null if Qt does not run on X11. Needs the QGuiApplication.
xcb_connection_t *current();

using OwnConnection = CPointer<xcb_connection_t, &xcb_disconnect>;

/// Opens another connection to the same server. It has an error if there is no server.
OwnConnection connectSeparately();

xcb_window_t root(xcb_connection_t *connection);

xcb_atom_t atom(xcb_connection_t *connection, std::string_view name);

/// The window that owns a selection; XCB_WINDOW_NONE without an owner.
xcb_window_t selectionOwner(xcb_connection_t *connection, xcb_atom_t selection);

/// Whether the window was created over this connection.
bool hasCreated(xcb_connection_t *connection, xcb_window_t window);

template <typename Reply>
using ReplyPointer = CPointer<Reply, &std::free>;

} // namespace X11Connection
