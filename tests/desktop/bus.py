"""Method calls on the session bus."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PROPERTIES = "org.freedesktop.DBus.Properties"


def call(owner, path, interface, method, arguments=None):
    """Returns the values of the answer. An error answer raises GLib.Error."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(owner, path, interface, method, arguments, None,
                         Gio.DBusCallFlags.NO_AUTO_START, -1, None).unpack()


def has_owner(name):
    return _ask_bus("NameHasOwner", name)


def owner_process(name):
    """The id of the process that owns a name."""
    return _ask_bus("GetConnectionUnixProcessID", name)


def _ask_bus(method, name):
    return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                GLib.Variant("(s)", (name,)))[0]
