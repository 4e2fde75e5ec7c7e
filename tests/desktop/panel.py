"""The program's panel as the user sees it."""

from accessibility import MenuObserver, find_application
from processes import end
from waiting import wait_for
from x11 import press_keys, windows_named

MAX_STOPS = 80  # presses of Tab; more than any tab order here


class Panel:
    """The running program and its panel."""

    def __init__(self, session, program, scale=1, environment=None):
        scaling = {} if scale == 1 else {"QT_SCALE_FACTOR": str(scale)}
        self._process = session.start(program, environment=scaling | (environment or {}))
        try:
            self._await()
        except BaseException:
            self.end()  # otherwise the next start would only activate this instance
            raise

    def _await(self):
        self.window, = wait_for("a panel", lambda: windows_named("Quillsatchel"))
        self._application = find_application(self._process)
        self._menus = MenuObserver()
        self.find("New Node", "push button")

    def end(self):
        """Sends SIGTERM and returns the exit status."""
        return end(self._process)

    @property
    def process(self):
        return self._process

    @property
    def process_id(self):
        return self._process.pid

    def wait_for_end(self, seconds=10):
        """Waits until the program exits by itself, and returns its status."""
        return self._process.wait(seconds)

    def is_running(self):
        return self._process.poll() is None

    def open_settings(self):
        """Opens the settings card and returns it."""
        press_keys("ctrl+comma")
        card = self.find("Quick Launchers", "dialog")
        card.find("Close", "push button")
        return card

    def find(self, name=None, role=None):
        return self._application.find(name, role)

    def has_any(self, name=None, role=None):
        return self._application.has_any(name, role)

    def menu_after(self, action):
        """The menu that `action` opens."""
        return self._menus.menu_after(action)

    def names_of(self, role):
        return [control.name for control in self._application.find_all(role=role)]

    def tab_names(self):
        return self.names_of("page tab")

    def active_tab_names(self):
        return [tab.name for tab in self._application.find_all(role="page tab")
                if tab.has("selected")]

    def tab(self, name):
        return self.find(name, "page tab")

    def node(self, number, count):
        """The group that contains a node's controls."""
        return self.find(f"Node {number} of {count}", "panel")

    def editor(self, number, count):
        return self.node(number, count).find("Node text", "text")

    def node_texts(self):
        return [editor.text for editor in self._application.find_all("Node text", "text")]

    def focused(self):
        """The control with the keyboard focus, or None."""
        return next((control for control in self._application.find_all()
                     if control.has("focused") and control.has("focusable")), None)

    def focused_name(self):
        focused = self.focused()
        return focused.name if focused else None

    def step_to(self, name, backwards=False):
        """Moves the focus with Tab to the next control of that name."""
        for _ in range(MAX_STOPS):
            self.step(backwards)
            if self.focused_name() == name:
                return self.focused()
        raise AssertionError(f"Tab does not reach {name}")

    def step(self, backwards=False):
        before = self._focus_location()
        in_editor = before is not None and before[0] == "Node text"
        press_keys(("ctrl+" if in_editor else "") + ("shift+" if backwards else "") + "Tab")
        wait_for("another control with the focus", lambda: self._focus_location() != before)

    def _focus_location(self):
        focused = self.focused()
        return (focused.name, focused.frame) if focused else None
