"""A virtual desktop for one test run. It does not touch the user's files or the network, and leaves
nothing behind."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "environment"))

import environment as private_environment  # noqa: E402
from processes import Processes, end  # noqa: E402
from waiting import wait_for  # noqa: E402

# Only these: portals, settings and trays of the machine would affect the program.
SERVICES = ("org.a11y.Bus", "org.xfce.Xfconf")
BUS_CONFIGURATION = """<busconfig>
<type>session</type>
<listen>unix:tmpdir=/tmp</listen>
<auth>EXTERNAL</auth>
<servicedir>services</servicedir>
<policy context="default">
<allow send_destination="*" eavesdrop="true"/>
<allow eavesdrop="true"/>
<allow own="*"/>
</policy>
</busconfig>
"""
RECORDING_XDG_OPEN = """#!/bin/sh
printf '%s\\n' "$@" >>"$OPENED_ADDRESSES"
"""

WINDOW_MANAGER = ("openbox", "--sm-disable")


class Session:
    """A display, a session bus, a window manager and an optional compositor.

    It also replaces the environment of this process, which is needed to find the accessibility bus.
    """

    def __init__(self, is_composited, screen=(1280, 1024)):
        self._is_composited = is_composited
        self._screen = screen
        self._compositor = None
        self._window_manager = None

    def __enter__(self):
        self.folder = pathlib.Path(
            tempfile.mkdtemp(prefix="desktop-test-", dir=private_environment.parent_folder()))
        self._log = open(self.folder / "log", "w")
        self._processes = Processes(self._make_environment(), self._log)
        try:
            self._start_display()
            self._start_bus()
            self.use_window_manager(*WINDOW_MANAGER)
            self.set_compositing(self._is_composited)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self._processes.end_all()
        self._log.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command, **options):
        return self._processes.start(*command, **options)

    @property
    def has_compositor(self):
        return self._compositor is not None

    def set_compositing(self, is_wanted):
        if is_wanted and not self._compositor:
            self._compositor = self.start("picom", "--backend", "xrender", "--config", "/dev/null")
            wait_for("a compositor", lambda: has_window_named("picom"))
        elif self._compositor and not is_wanted:
            end(self._compositor)
            self._compositor = None

    @property
    def data_folder(self):
        """The program's data folder."""
        return self.folder / "data_home" / "Quillsatchel"

    @property
    def versions_folder(self):
        """The folder of earlier versions."""
        return self.folder / "state_home" / "Quillsatchel" / "Earlier versions"

    def clear_data(self):
        shutil.rmtree(self.data_folder, ignore_errors=True)
        shutil.rmtree(self.versions_folder, ignore_errors=True)
        (self.folder / "opened").unlink(missing_ok=True)

    def opened_addresses(self):
        try:
            return (self.folder / "opened").read_text().splitlines()
        except FileNotFoundError:
            return []

    def log(self):
        return (self.folder / "log").read_text(errors="replace")

    def take_picture(self, file):
        subprocess.run(["import", "-window", "root", file], check=True)

    def _make_environment(self):
        programs = self._make_folder("bin")
        opener = programs / "xdg-open"
        opener.write_text(RECORDING_XDG_OPEN)
        opener.chmod(0o755)
        variables = private_environment.make(self.folder) | {
            "PATH": f"{programs}:{private_environment.PATH}",
            "OPENED_ADDRESSES": str(self.folder / "opened"),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }
        # AddressSanitizer's strict string checks abort in libxkbcommon when a program reads the
        # keyboard map of an X server.
        variables.pop("ASAN_OPTIONS", None)
        os.environ.clear()
        os.environ.update(variables)
        return variables

    def _make_folder(self, name):
        folder = self.folder / name
        folder.mkdir(mode=0o700)
        return folder

    def _set(self, name, value):
        os.environ[name] = self._processes.environment[name] = value

    def _start_display(self):
        width, height = self._screen
        reader, writer = os.pipe()
        self.start("Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24",
                   "-nolisten", "tcp", "-noreset", pass_fds=[writer])
        os.close(writer)
        with open(reader) as display:
            number = display.readline().strip()
        if not number:
            raise RuntimeError(f"Xvfb did not start:\n{self.log()}")
        self._set("DISPLAY", f":{number}")

    def _start_bus(self):
        services = self._make_folder("services")
        for name in SERVICES:
            file = f"{name}.service"
            (services / file).symlink_to(pathlib.Path("/usr/share/dbus-1/services", file))
        configuration = self.folder / "session_bus.conf"
        configuration.write_text(BUS_CONFIGURATION)
        bus = self.start("dbus-daemon", f"--config-file={configuration}", "--nofork",
                         "--nopidfile", "--print-address", stdout=subprocess.PIPE, text=True)
        self._set("DBUS_SESSION_BUS_ADDRESS", bus.stdout.readline().strip())

    def use_window_manager(self, *command):
        """Replaces the running window manager; without a command, only ends it."""
        if self._window_manager:
            end(self._window_manager)
            self._window_manager = None
        if command:
            self._window_manager = self.start(*command)
            wait_for("a window manager", _has_window_manager)


def has_window_named(name):
    search = ["xdotool", "search", "--name", f"^{name}$"]
    return subprocess.run(search, stdout=subprocess.DEVNULL).returncode == 0


def _has_window_manager():
    # It sets its name before it manages windows, and the number of desktops afterwards. That number
    # outlives it, so both must be set.
    questions = (["wmctrl", "-m"], ["xdotool", "get_num_desktops"])
    return all(subprocess.run(question, capture_output=True).returncode == 0
               for question in questions)
