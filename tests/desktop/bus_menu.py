"""A menu that a program exports over D-Bus to trays and global menu bars."""

from typing import NamedTuple

from gi.repository import GLib

from bus import call
from waiting import wait_for_value

MENU = "com.canonical.dbusmenu"


class Entry(NamedTuple):
    """The properties of an entry that a desktop draws."""

    label: str
    mark: int | None = None
    keys: tuple = ()
    has_icon: bool = False
    is_enabled: bool = True


SEPARATOR = Entry("-")


class Menu:
    """A program's menu, or the submenu of the entry `parent`."""

    def __init__(self, owner, path, parent=0):
        self._owner, self._path, self._parent = owner, path, parent

    def entries(self):
        """As desktops ask for them when the menu opens."""
        self._call("AboutToShow", GLib.Variant("(i)", (self._parent,)))
        return [_entry(properties) for _, properties in self._layout()]

    def await_entries(self, expected):
        wait_for_value("the menu", expected, self.entries)

    def choose(self, label):
        self._call("Event", GLib.Variant("(isvu)", (self._number(label), "clicked",
                                                    GLib.Variant("s", ""), 0)))

    def open_submenu(self, label):
        number = self._number(label)
        self._call("AboutToShow", GLib.Variant("(i)", (number,)))
        return Menu(self._owner, self._path, number)

    def _number(self, label):
        return next(number for number, properties in self._layout()
                    if properties.get("label") == label)

    def _layout(self):
        _, (_, _, children) = self._call("GetLayout",
                                         GLib.Variant("(iias)", (self._parent, -1, [])))
        return [(number, properties) for number, properties, _ in children]

    def _call(self, method, arguments):
        return call(self._owner, self._path, MENU, method, arguments)


def _entry(properties):
    if properties.get("type") == "separator":
        return SEPARATOR
    shortcuts = properties.get("shortcut") or [[]]
    is_checkable = properties.get("toggle-type") == "checkmark"
    return Entry(properties["label"], properties["toggle-state"] if is_checkable else None,
                 tuple(shortcuts[0]), "icon-data" in properties, properties.get("enabled", True))
