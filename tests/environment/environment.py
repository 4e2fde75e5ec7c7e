#!/usr/bin/python3 -B
"""A private environment for a test, without the user's settings, folders, fonts, applications and
display.

    environment.py [NAME=VALUE]... PROGRAM [ARGUMENT]...

runs a program in a new environment and removes its folders afterwards.
"""

import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile

PATH = "/usr/local/bin:/usr/bin:/bin"
FONTS = pathlib.Path(__file__).with_name("fonts.conf")
# Options of sanitizers and the number of kills in SatchelStoreKilledTest come from the caller.
KEPT_VARIABLES = ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "QUILLSATCHEL_KILLS")
HOMES = ("CACHE_HOME", "CONFIG_HOME", "DATA_HOME", "RUNTIME_DIR", "STATE_HOME")
# Installed data and settings that the tests need.
DATA = ("glib-2.0", "glycin-loaders", "icons", "mime", "pocketsphinx", "themes", "xfce4")
SETTINGS = ("openbox", "xfce4")
# Safe in socket paths and D-Bus addresses. The limit leaves space for file names of the tests.
USABLE_PATH = re.compile(r"/[A-Za-z0-9_./-]{1,39}")


def parent_folder():
    """The folder in which the folders of environments are created."""
    default = tempfile.gettempdir()
    return default if USABLE_PATH.fullmatch(default) else "/tmp"


def make(folder):
    """Creates an environment in `folder` and returns its variables."""
    # Tests that run as root switch to another user, who needs access to the test's files.
    folder.chmod(0o711)
    temporary = folder / "tmp"
    temporary.mkdir()
    temporary.chmod(0o1777)
    kept = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
    return kept | {
        "PATH": PATH,
        "HOME": str(_make_private(folder / "home")),
        "TMPDIR": str(temporary),
        "LC_ALL": "C.UTF-8",
        "TZ": "UTC",
        "FONTCONFIG_FILE": str(FONTS),
        # Without an address, libraries would connect to the user's bus or start one.
        "DBUS_SESSION_BUS_ADDRESS": f"unix:path={folder}/no-bus",
        "XDG_CONFIG_DIRS": str(_link(SETTINGS, "/etc/xdg", folder / "system_config")),
        "XDG_DATA_DIRS": str(_link(DATA, "/usr/share", folder / "system_data")),
        **{f"XDG_{name}": str(_make_private(folder / name.lower())) for name in HOMES},
    }


def run(command, variables):
    """Returns the program's exit status, or an error message if a signal ended it."""
    os.umask(0o022)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("Terminated."))
    with tempfile.TemporaryDirectory(prefix="test-", dir=parent_folder(),
                                     ignore_cleanup_errors=True) as folder:
        status = subprocess.run(command, env=make(pathlib.Path(folder)) | variables).returncode
    return status if status >= 0 else f"{command[0]} ended by {signal.Signals(-status).name}."


def _make_private(folder):
    folder.mkdir(mode=0o700)
    return folder


def _link(names, source, folder):
    folder.mkdir()
    for name in names:
        (folder / name).symlink_to(pathlib.Path(source, name))
    return folder


def _main():
    words = sys.argv[1:]
    variables = {}
    while words and "=" in words[0]:
        name, _, variables[name] = words.pop(0).partition("=")
    if not words:
        sys.exit(__doc__)
    sys.exit(run(words, variables))


if __name__ == "__main__":
    _main()
