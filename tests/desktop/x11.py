"""Window properties, and a user's pointer, keys and clipboard on X11."""

import contextlib
import re
import subprocess
import time
from typing import NamedTuple

from processes import end
from waiting import wait_for


BLUR_BEHIND = "_KDE_NET_WM_BLUR_BEHIND_REGION"
# In the keyboard maps of X servers on Linux, for F1 to F10.
FIRST_FUNCTION_KEY_CODE = 67
FUNCTION_KEY = re.compile(r"\bF([1-9]|10)$")


class Point(NamedTuple):
    x: int
    y: int

    def moved(self, by_x, by_y):
        return Point(self.x + by_x, self.y + by_y)


class Rect(NamedTuple):
    x: int
    y: int
    width: int
    height: int

    @property
    def center(self):
        return Point(self.x + self.width // 2, self.y + self.height // 2)

    @property
    def size(self):
        return self.width, self.height

    def contains(self, other):
        return (self.x <= other.x and other.x + other.width <= self.x + self.width and
                self.y <= other.y and other.y + other.height <= self.y + self.height)


class Window:
    """A window by its X11 id, as other programs see it."""

    def __init__(self, number):
        self.number = number

    def __eq__(self, other):
        return isinstance(other, Window) and self.number == other.number

    def __repr__(self):
        return f"Window({self.number:#x})"

    def frame(self):
        facts = run("xwininfo", "-id", self.number)
        x, y = (_number(rf"Absolute upper-left {axis}:\s+(-?\d+)", facts) for axis in "XY")
        width, height = (_number(rf"{side}:\s+(\d+)", facts) for side in ("Width", "Height"))
        return Rect(x, y, width, height)

    def is_visible(self):
        facts = subprocess.run(["xwininfo", "-id", str(self.number)], capture_output=True, text=True)
        return "Map State: IsViewable" in facts.stdout

    def states(self):
        """Names of _NET_WM_STATE atoms, such as ABOVE and MAXIMIZED_VERT."""
        return set(re.findall(r"_NET_WM_STATE_(\w+)", self._property("_NET_WM_STATE")))

    def is_iconic(self):
        return "window state: Iconic" in self._property("WM_STATE")

    def desktop(self):
        """None if no window manager has set it."""
        number = re.search(r"= (\d+)", self._property("_NET_WM_DESKTOP"))
        return int(number[1]) if number else None

    def outer_frame(self):
        """The frame with the window manager's decorations."""
        numbers = re.findall(r"\d+", self._property("_NET_FRAME_EXTENTS").partition("=")[2])
        left, right, top, bottom = map(int, numbers or 4 * [0])
        x, y, width, height = self.frame()
        return Rect(x - left, y - top, width + left + right, height + top + bottom)

    def minimum_size(self):
        hints = self._property("WM_NORMAL_HINTS")
        return tuple(map(int, re.search(r"minimum size: (\d+) by (\d+)", hints).groups()))

    def blurred_area(self):
        """The rectangles of the requested background blur; empty if it requests none."""
        numbers = re.findall(r"\d+", self._property(BLUR_BEHIND).partition("=")[2])
        return [Rect(*map(int, numbers[at:at + 4])) for at in range(0, len(numbers), 4)]

    def request_size(self, width, height):
        run("xdotool", "windowsize", self.number, width, height)

    def request_position(self, x, y):
        run("xdotool", "windowmove", self.number, x, y)

    def request_maximized(self):
        run("wmctrl", "-i", "-r", hex(self.number), "-b", "add,maximized_vert,maximized_horz")

    def activate(self):
        run("wmctrl", "-i", "-a", hex(self.number))

    def _property(self, name):
        return run("xprop", "-id", self.number, name)


def run(*command):
    words = [str(word) for word in command]
    done = subprocess.run(words, capture_output=True, text=True)
    if done.returncode:
        raise AssertionError(f"{' '.join(words)}: {done.stderr or done.returncode}")
    return done.stdout


def windows_named(name):
    search = ["xdotool", "search", "--onlyvisible", "--name", f"^{name}$"]
    found = subprocess.run(search, capture_output=True, text=True).stdout
    return [Window(int(number)) for number in found.split()]


def windows_of_class(name):
    search = ["xdotool", "search", "--onlyvisible", "--class", f"^{name}$"]
    found = subprocess.run(search, capture_output=True, text=True).stdout
    return [Window(int(number)) for number in found.split()]


def managed_windows():
    listed = run("xprop", "-root", "_NET_CLIENT_LIST")
    return [Window(int(number, 16)) for number in re.findall(r"0x[0-9a-f]+", listed)]


def active_window():
    return Window(_number(r"(0x[0-9a-f]+)", run("xprop", "-root", "_NET_ACTIVE_WINDOW")))


def work_area():
    areas = run("xprop", "-root", "_NET_WORKAREA")
    return Rect(*map(int, re.findall(r"\d+", areas.partition("=")[2])[:4]))


def set_blur_support(is_supported):
    """Announces or withdraws background blur as a compositor does."""
    announcement = ["-f", BLUR_BEHIND, "32c", "-set", BLUR_BEHIND, 0]
    run("xprop", "-root", *(announcement if is_supported else ["-remove", BLUR_BEHIND]))


def show_desktop(number):
    run("wmctrl", "-s", number)


def add_monitor(name, area, output, add_cleanup):
    """Makes `area` of the screen a RandR monitor. `output` is an output's name or "none"."""
    x, y, width, height = area
    run("xrandr", "--setmonitor", name, f"{width}/{width // 4}x{height}/{height // 4}+{x}+{y}",
        output)
    add_cleanup(lambda: name in run("xrandr", "--listmonitors") and remove_monitor(name))


def remove_monitor(name):
    run("xrandr", "--delmonitor", name)


def color_at(point):
    """In the form #RRGGBB."""
    pixel = run("import", "-window", "root", "-crop", f"1x1+{point.x}+{point.y}", "-depth", 8,
                "txt:-")
    return re.search(r"#[0-9A-F]{6}", pixel)[0]


def colors_in(frame):
    """All colours in the frame, as (red, green, blue) from 0 to 255."""
    x, y, width, height = frame
    picture = subprocess.run(
        ["import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-depth", "8", "rgb:-"],
        check=True, stdout=subprocess.PIPE).stdout
    return set(zip(picture[0::3], picture[1::3], picture[2::3]))


class Picture:
    """A screenshot."""

    def __init__(self):
        size = run("xdotool", "getdisplaygeometry").split()
        self._width = int(size[0])
        self._pixels = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"],
                                      check=True, capture_output=True).stdout

    def pixel(self, x, y):
        """(red, green, blue), from 0 to 255."""
        begin = 3 * (y * self._width + x)
        return tuple(self._pixels[begin:begin + 3])


def open_colored_window(session, title, color, frame, add_cleanup=lambda *_: None):
    """Opens and activates a window of another program, filled with one colour."""
    x, y, width, height = frame
    program = session.start("xmessage", "-title", title, "-bg", color, "-buttons", "", "-geometry",
                            f"{width}x{height}+{x}+{y}", " ")
    add_cleanup(end, program)
    window, = wait_for(f"a window named {title}", lambda: windows_named(title))
    wait_for(f"{title} active", lambda: active_window() == window)
    return window


class WindowEvents:
    """Records the X events of a window from now on."""

    def __init__(self, session, window):
        self._file = session.folder / f"events-{window.number}"
        with open(self._file, "w") as log:
            session.start("xev", "-id", str(window.number), "-event", "structure", stdout=log)
        x, y, _, _ = window.frame()

        def receives_events():
            window.request_position(x + 1, y)
            window.request_position(x, y)
            return self.count("ConfigureNotify")

        wait_for("the event log", receives_events)

    def count(self, kind):
        return self._file.read_text().count(kind)


def move_pointer(point):
    run("xdotool", "mousemove", *point)


def click(point, button=1, times=1):
    run("xdotool", "mousemove", *point, "click", "--repeat", times, "--delay", 40, button)


@contextlib.contextmanager
def button_held(point):
    """Presses the left button at `point`, and releases it wherever the pointer is at the end."""
    run("xdotool", "mousemove", *point, "mousedown", 1)
    try:
        yield
    finally:
        run("xdotool", "mouseup", 1)


def glide(start, by_x, by_y, steps=10):
    """Moves the pointer in small steps, as a hand does. Returns its end position."""
    for step in range(1, steps + 1):
        move_pointer(start.moved(by_x * step // steps, by_y * step // steps))
        time.sleep(0.02)
    return start.moved(by_x, by_y)


def press_keys(*keys):
    run("xdotool", "key", "--delay", 20, *(_with_key_code(key) for key in keys))


def type_text(text):
    """ASCII only, because the X server's keyboard has no other letters."""
    run("xdotool", "type", "--delay", 5, text)


def set_clipboard(text):
    # xclip keeps running to serve the text, so an inherited pipe would never reach its end.
    subprocess.run(["xclip", "-selection", "clipboard"], input=text.encode(), check=True,
                   stdout=subprocess.DEVNULL)


def clipboard():
    target = ["-target", "UTF8_STRING"]
    return subprocess.run(["xclip", "-selection", "clipboard", "-out", *target], check=True,
                          capture_output=True).stdout.decode()


def _with_key_code(key):
    """With newer keyboard layouts, xdotool would hold Alt for the name of a function key."""
    return FUNCTION_KEY.sub(lambda name: str(FIRST_FUNCTION_KEY_CODE - 1 + int(name[1])), key)


def _number(pattern, text):
    return int(re.search(pattern, text)[1], 0)
