"""The program's controls on the accessibility bus."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from waiting import wait_for  # noqa: E402
from x11 import Rect, click  # noqa: E402

PRESSING_ACTIONS = ("Press", "Toggle")

# Newer releases of AT-SPI rename some roles.
EARLIER_ROLE_NAMES = {"button": "push button"}


class Control:
    """A control. The find functions skip hidden controls and their children."""

    def __init__(self, accessible):
        self._accessible = accessible

    @property
    def name(self):
        return self._accessible.get_name()

    @property
    def role(self):
        name = self._accessible.get_role_name()
        return EARLIER_ROLE_NAMES.get(name, name)

    @property
    def text(self):
        return Atspi.Text.get_text(self._accessible, 0, -1)

    def insert(self, position, text):
        Atspi.EditableText.insert_text(self._accessible, position, text, len(text.encode()))

    @property
    def frame(self):
        extents = Atspi.Component.get_extents(self._accessible, Atspi.CoordType.SCREEN)
        return Rect(extents.x, extents.y, extents.width, extents.height)

    def has(self, state):
        """`state` is a name of Atspi.StateType in lower case, such as "focused"."""
        state_type = getattr(Atspi.StateType, state.upper())
        return self._accessible.get_state_set().contains(state_type)

    def press(self):
        self.perform(*PRESSING_ACTIONS)

    def perform(self, *names):
        """Performs the control's first action that has one of these names."""
        for index in range(Atspi.Action.get_n_actions(self._accessible)):
            if Atspi.Action.get_action_name(self._accessible, index) in names:
                Atspi.Action.do_action(self._accessible, index)
                return
        raise AssertionError(f"{self} has no action {' or '.join(names)}")

    def grab_focus(self):
        Atspi.Component.grab_focus(self._accessible)

    def click(self, button=1, times=1):
        click(self.frame.center, button, times)

    def find(self, name=None, role=None):
        """Waits for the first matching descendant."""
        return wait_for(f"a {role or 'control'} named {name}", lambda: self._first(name, role))

    def find_all(self, name=None, role=None):
        """All matching descendants now, in tree order."""
        try:
            return list(self._matching(name, role))
        except GLib.Error:
            return []  # a control disappeared meanwhile

    def children(self):
        """The direct children, hidden ones included."""
        count = self._accessible.get_child_count()
        return [Control(self._accessible.get_child_at_index(index)) for index in range(count)]

    def has_any(self, name=None, role=None):
        return self._first(name, role) is not None

    def is_gone(self):
        try:
            return not self.has("showing")
        except GLib.Error:
            return True

    def _first(self, name, role):
        try:
            return next(self._matching(name, role), None)
        except GLib.Error:
            return None  # a control disappeared meanwhile

    def _matching(self, name, role):
        return (control for control in self._descendants()
                if name in (None, control.name) and role in (None, control.role))

    def _descendants(self):
        for index in range(self._accessible.get_child_count()):
            child = self._accessible.get_child_at_index(index)
            if child is None or not (control := Control(child)).has("showing"):
                continue
            yield control
            yield from control._descendants()

    def __str__(self):
        return f"{self.role} \"{self.name}\""


class MenuObserver:
    """Finds menus by the events they send when they open: menus are not in the program's tree."""

    def __init__(self):
        self._shown = []
        self._listener = Atspi.EventListener.new(self._record)
        self._listener.register("object:state-changed:showing")

    def menu_after(self, action):
        """The menu that `action` opens."""
        self._shown.clear()
        action()
        return wait_for("an open menu", self._opened_menu)

    def _opened_menu(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return next((Control(shown) for shown in self._shown if _is_menu(shown)), None)

    # Makes no call: this may run inside another call, which would then never return.
    def _record(self, event):
        if event.detail1:
            self._shown.append(event.source)


class EventObserver:
    """Records the sources of one kind of event, such as "object:state-changed:showing"."""

    def __init__(self, kind):
        self._sources = []
        self._listener = Atspi.EventListener.new(self._record)
        self._listener.register(kind)

    def clear(self):
        self._sources.clear()

    def wait_for(self, name, role):
        """Waits for an event of the control with that name and role."""
        wait_for(f"an event of a {role} named {name}", lambda: self._has_received(name, role))

    def _has_received(self, name, role):
        while GLib.MainContext.default().iteration(False):
            pass
        return any(_has_name_and_role(source, name, role) for source in self._sources)

    # Makes no call, like MenuObserver._record.
    def _record(self, event):
        self._sources.append(event.source)


def _has_name_and_role(accessible, name, role):
    try:
        control = Control(accessible)
        return control.name == name and control.role == role
    except GLib.Error:
        return False


def _is_menu(accessible):
    try:
        return accessible.get_role() == Atspi.Role.POPUP_MENU
    except GLib.Error:
        return False  # it has already disappeared


def find_application(process):
    """Waits for the program on the accessibility bus."""
    Atspi.init()
    Atspi.set_timeout(10_000, 10_000)
    return wait_for("the program on the accessibility bus", lambda: _application(process.pid))


def _application(process_id):
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application and application.get_process_id() == process_id:
            application.set_cache_mask(Atspi.Cache.NONE)
            return Control(application)
    return None
