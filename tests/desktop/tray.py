"""A desktop's tray, and what the program tells it of its icon and menu, asked as trays ask."""

import subprocess

from gi.repository import GLib  # noqa: E402

from bus_menu import PROPERTIES, Menu, call  # noqa: E402
from processes import end  # noqa: E402
from waiting import wait_for  # noqa: E402
from x11 import Point, Window, click, press_keys, windows_of_class  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"


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
        click(wait_for("the icon", lambda: _find_color("xfce4-panel", icon_color)), button=3)
        opened, = wait_for("an open menu", lambda: _menu_windows() - menus)
        return Window(opened)


class EmbeddingTray:
    """A panel that shows tray icons as windows within its own."""

    def __init__(self, session):
        configuration = session.folder / "tint2rc"
        configuration.write_text("panel_items = S\npanel_size = 100% 30\n")
        self._process = session.start("tint2", "-c", str(configuration))
        wait_for("a tray", lambda: windows_of_class("tint2"))

    def end(self):
        end(self._process)

    def place_of_icon(self, color):
        return wait_for("the icon", lambda: _find_color("tint2", color))


class StatusItem:
    """The program's icon in the tray, as it is registered with it."""

    def __init__(self, process_id):
        self._owner = wait_for("the icon in the tray", lambda: _find_owner(process_id))

    def fact(self, name):
        return call(self._owner, "/StatusNotifierItem", PROPERTIES, "Get",
                    GLib.Variant("(ss)", (ITEM, name)))[0]

    def activate(self):
        """A plain click on the icon."""
        call(self._owner, "/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (0, 0)))

    @property
    def menu(self):
        return Menu(self._owner, self.fact("Menu"))


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
        return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                     "GetConnectionUnixProcessID", GLib.Variant("(s)", (owner,)))[0]
    except GLib.Error:
        return None  # gone, and the tray has not noticed yet


def _watcher_property(name):
    try:
        return call(WATCHER, WATCHER_PATH, PROPERTIES, "Get",
                     GLib.Variant("(ss)", (WATCHER, name)))[0]
    except GLib.Error:
        return None


def _find_color(window_class, color):
    for window in windows_of_class(window_class):
        points = _points_of_color(window.frame(), color)
        if points:
            return points[len(points) // 2]
    return None


def _points_of_color(frame, color):
    """Where the screen within the frame is about of that colour."""
    done = subprocess.run(
        ["import", "-window", "root", "-crop", f"{frame.width}x{frame.height}+{frame.x}+{frame.y}",
         "-depth", "8", "rgb:-"], capture_output=True, check=True)
    pixels = done.stdout
    return [Point(frame.x + index % frame.width, frame.y + index // frame.width)
            for index in range(len(pixels) // 3)
            if all(abs(pixels[index * 3 + channel] - color[channel]) < 24 for channel in range(3))]
