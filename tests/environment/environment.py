#!/usr/bin/python3 -B
"""The environment of a test. It has no settings, folders, fonts, applications or display of the
machine's user.

    environment.py [NAME=VALUE]... PROGRAM [ARGUMENT]...

runs a program in a new one and removes its folders afterwards.
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
# How sanitizers report, and how often SatchelStoreKilledTest kills, is up to the caller.
KEPT_VARIABLES = ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "QUILLSATCHEL_KILLS")
HOMES = ("CACHE_HOME", "CONFIG_HOME", "DATA_HOME", "RUNTIME_DIR", "STATE_HOME")
# The parts of the installed data and settings that programs in the tests need.
DATA = ("glib-2.0", "icons", "mime", "pocketsphinx", "themes", "xfce4")
SETTINGS = ("openbox", "xfce4")
# What sockets and the addresses of servers allow. The names of a test's own files come on top.
USABLE_PATH = re.compile(r"/[A-Za-z0-9_./-]{1,39}")


def place():
    """Where the folders of environments are made."""
    usual = tempfile.gettempdir()
    return usual if USABLE_PATH.fullmatch(usual) else "/tmp"


def make(folder):
    """The variables of a new environment, whose folders are made in `folder`."""
    # Tests that run as root become another user, who must reach the test's files.
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
        # Without an address, libraries would look for the user's bus or start one.
        "DBUS_SESSION_BUS_ADDRESS": f"unix:path={folder}/no-bus",
        "XDG_CONFIG_DIRS": str(_link(SETTINGS, "/etc/xdg", folder / "system_config")),
        "XDG_DATA_DIRS": str(_link(DATA, "/usr/share", folder / "system_data")),
        **{f"XDG_{name}": str(_make_private(folder / name.lower())) for name in HOMES},
    }


def run(command, variables):
    """Gives the program's exit status, or what to tell instead."""
    os.umask(0o022)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("Terminated."))
    with tempfile.TemporaryDirectory(prefix="test-", dir=place(),
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
