#!/usr/bin/env python3
"""Runs a program on a virtual desktop with a tray.

usage: with_tray.py PROGRAM [ARGUMENT]...
"""

import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "desktop"))

from session import Session  # noqa: E402
from tray import Tray  # noqa: E402

with Session(True) as session:
    Tray(session)
    sys.exit(subprocess.run(sys.argv[1:]).returncode)
