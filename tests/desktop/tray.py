"""A desktop's tray, and the program's icon and menu as a tray sees them."""

import subprocess

from gi.repository import GLib

from bus import PROPERTIES, call
from bus_menu import Menu
from processes import end
from waiting import wait_for
from x11 import Point, Window, click, press_keys, windows_of_class

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"


class Tray:
    """A desktop panel with a tray for D-Bus status notifier items. Runs until `end`."""

    def __init__(self, session):
        self._process = session.start("xfce4-panel", "--disable-wm-check")
        wait_for("a tray", has_tray_over_bus)

    def end(self):
        end(self._process)
        wait_for("the tray to end", lambda: not has_tray_over_bus())

    def choose(self, number, icon_color):
        """Opens the icon's menu and chooses an entry by keys; `number` counts from 1, without
        separators. `icon_color` must be unique in the tray."""
        self.open_menu(icon_color)
        press_keys(*["Down"] * number, "Return")

    def open_menu(self, icon_color):
        menus = _menu_windows()
        click(wait_for("the icon", lambda: _find_color("xfce4-panel", icon_color)), button=3)
        opened, = wait_for("an open menu", lambda: _menu_windows() - menus)
        return Window(opened)


class EmbeddingTray:
    """A desktop panel with an XEmbed tray, which embeds the windows of icons."""

    def __init__(self, session):
        configuration = session.folder / "tint2rc"
        configuration.write_text("panel_items = S\npanel_size = 100% 30\n")
        self._process = session.start("tint2", "-c", str(configuration))
        wait_for("a tray", lambda: windows_of_class("tint2"))

    def end(self):
        end(self._process)

    def icon_position(self, color):
        return wait_for("the icon", lambda: _find_color("tint2", color))


class StatusItem:
    """The program's registered status notifier item."""

    def __init__(self, process_id):
        self._owner = wait_for("the icon in the tray", lambda: _find_owner(process_id))

    def get_property(self, name):
        return call(self._owner, "/StatusNotifierItem", PROPERTIES, "Get",
                    GLib.Variant("(ss)", (ITEM, name)))[0]

    def activate(self):
        """Clicks the icon."""
        call(self._owner, "/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (0, 0)))

    @property
    def menu(self):
        return Menu(self._owner, self.get_property("Menu"))


def _menu_windows():
    return {window.number for window in windows_of_class("wrapper-2.0")}


def has_tray_over_bus():
    return bool(_watcher_property("IsStatusNotifierHostRegistered"))


def is_in_tray(process_id):
    """Whether the program's icon is registered in the D-Bus tray now."""
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
        return None  # it has exited, and the tray has not noticed yet


def _watcher_property(name):
    try:
        return call(WATCHER, WATCHER_PATH, PROPERTIES, "Get",
                     GLib.Variant("(ss)", (WATCHER, name)))[0]
    except GLib.Error:
        return None


def _find_color(window_class, color):
    for window in windows_of_class(window_class):
        pixels = _pixels_of_color(window.frame(), color)
        if pixels:
            return pixels[len(pixels) // 2]
    return None


def _pixels_of_color(frame, color):
    """The positions of pixels within `frame` whose colour is close to `color`."""
    done = subprocess.run(
        ["import", "-window", "root", "-crop", f"{frame.width}x{frame.height}+{frame.x}+{frame.y}",
         "-depth", "8", "rgb:-"], capture_output=True, check=True)
    pixels = done.stdout
    return [Point(frame.x + index % frame.width, frame.y + index // frame.width)
            for index in range(len(pixels) // 3)
            if all(abs(pixels[index * 3 + channel] - color[channel]) < 24 for channel in range(3))]
