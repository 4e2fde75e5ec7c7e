"""A desktop's tray, and what the program tells it of its icon and menu, asked as trays ask."""

import subprocess
from typing import NamedTuple

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from processes import end  # noqa: E402
from waiting import wait_for, wait_for_value  # noqa: E402
from x11 import Point, click, press_keys, windows_of_class  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"


class Entry(NamedTuple):
    """An entry of a menu, as a tray draws it."""

    label: str
    mark: int | None = None
    keys: tuple = ()
    has_icon: bool = False


SEPARATOR = Entry("-")


class Tray:
    """A panel that shows tray icons over D-Bus. It runs until it is ended."""

    def __init__(self, session):
        self._process = session.start("xfce4-panel", "--disable-wm-check")
        wait_for("a tray", has_tray_over_bus)

    def end(self):
        end(self._process)
        wait_for("no tray", lambda: not has_tray_over_bus())

    def choose(self, number, icon_color):
        """Opens the icon's menu and chooses an entry as a user does, by its number as the tray has
        it. The icon is found by a colour that nothing else in the tray has."""
        self.open_menu(icon_color)
        press_keys(*["Down"] * number, "Return")

    def open_menu(self, icon_color):
        menus = _menu_windows()
        click(wait_for("the icon", lambda: self._place_of(icon_color)), button=3)
        wait_for("an open menu", lambda: _menu_windows() - menus)

    def _place_of(self, color):
        for window in windows_of_class("xfce4-panel"):
            frame = window.frame()
            points = _points_of_color(frame, color)
            if points:
                return points[len(points) // 2]
        return None


class StatusItem:
    """The program's icon in the tray, as it is registered with it."""

    def __init__(self, process_id):
        self._owner = wait_for("the icon in the tray", lambda: _find_owner(process_id))

    def property(self, name):
        return self._call("/StatusNotifierItem", PROPERTIES, "Get",
                          GLib.Variant("(ss)", (ITEM, name)))[0]

    def activate(self):
        """A plain click on the icon."""
        self._call("/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (0, 0)))

    def entries(self):
        return [_entry(properties) for _, properties in self._layout()]

    def await_entries(self, expected):
        wait_for_value("the menu", expected, self.entries)

    def choose(self, label):
        number = next(number for number, properties in self._layout()
                      if properties.get("label") == label)
        self._call(self._menu_path(), MENU, "Event",
                   GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)))

    def _layout(self):
        _, (_, _, children) = self._call(self._menu_path(), MENU, "GetLayout",
                                         GLib.Variant("(iias)", (0, -1, [])))
        return [(number, properties) for number, properties, _ in children]

    def _menu_path(self):
        return self.property("Menu")

    def _call(self, path, interface, method, arguments):
        return _call(self._owner, path, interface, method, arguments)


def _menu_windows():
    return {window.number for window in windows_of_class("wrapper-2.0")}


def has_tray_over_bus():
    return bool(_watcher_property("IsStatusNotifierHostRegistered"))


def is_in_tray(process_id):
    """Whether the tray over D-Bus has the program's icon now."""
    return _find_owner(process_id) is not None


def _find_owner(process_id):
    for item in _watcher_property("RegisteredStatusNotifierItems") or ():
        owner = item.split("/")[0]
        if _process_of(owner) == process_id:
            return owner
    return None


def _process_of(owner):
    try:
        return _call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                     "GetConnectionUnixProcessID", GLib.Variant("(s)", (owner,)))[0]
    except GLib.Error:
        return None  # gone, and the tray has not noticed yet


def _watcher_property(name):
    try:
        return _call(WATCHER, WATCHER_PATH, PROPERTIES, "Get",
                     GLib.Variant("(ss)", (WATCHER, name)))[0]
    except GLib.Error:
        return None


def _call(owner, path, interface, method, arguments):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(owner, path, interface, method, arguments, None,
                         Gio.DBusCallFlags.NO_AUTO_START, -1, None).unpack()


def _entry(properties):
    if properties.get("type") == "separator":
        return SEPARATOR
    shortcuts = properties.get("shortcut") or [[]]
    is_checkable = properties.get("toggle-type") == "checkmark"
    return Entry(properties["label"], properties["toggle-state"] if is_checkable else None,
                 tuple(shortcuts[0]), "icon-data" in properties)


def _points_of_color(frame, color):
    """Where the screen within the frame is about of that colour."""
    done = subprocess.run(
        ["import", "-window", "root", "-crop", f"{frame.width}x{frame.height}+{frame.x}+{frame.y}",
         "-depth", "8", "rgb:-"], capture_output=True, check=True)
    pixels = done.stdout
    return [Point(frame.x + index % frame.width, frame.y + index // frame.width)
            for index in range(len(pixels) // 3)
            if all(abs(pixels[index * 3 + channel] - color[channel]) < 24 for channel in range(3))]
