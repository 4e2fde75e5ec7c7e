#!/usr/bin/python3 -B
"""Runs the tests of the whole program on a virtual desktop:

    run_tests.py PROGRAM FOLDER (--composited | --plain) [--website] [-k PATTERN]

FOLDER receives screenshots of failed tests. --website runs the tests that serve a website instead,
and exits with status 77 if the machine does not allow that. Needs the system's Python, because only
that finds Debian's AT-SPI bindings.
"""

import argparse
import pathlib
import signal
import sys
import unittest

import network
from desktop_test import DesktopTest, PictureTakingResult
from session import Session

MAX_SECONDS = 3570  # for all tests on a very busy machine; each test also has its own timeouts
SKIPPED = 77
NO_WEBSITE = "Skipped: port 80 of 127.0.0.1 and network namespaces are not available."


def main():
    arguments = parse_arguments()
    # Signals raise exceptions, so that the session always cleans up.
    signal.signal(signal.SIGALRM, interrupt_with(f"Timed out after {MAX_SECONDS} s."))
    signal.signal(signal.SIGTERM, interrupt_with("Received SIGTERM."))
    signal.alarm(MAX_SECONDS)
    clear_pictures(arguments.folder)
    if arguments.website and not network.prepare_http_port():
        print(NO_WEBSITE)
        sys.exit(SKIPPED)
    with Session(arguments.composited) as session:
        DesktopTest.session = session
        DesktopTest.program = arguments.program.resolve()
        DesktopTest.pictures = arguments.folder
        sys.exit(run(find_tests(arguments), session, arguments.folder))


def run(tests, session, folder):
    runner = unittest.TextTestRunner(verbosity=2, resultclass=PictureTakingResult)
    try:
        result = runner.run(tests)
    except KeyboardInterrupt as reason:
        session.take_picture(folder / "test_interrupted.png")
        return f"{reason} Screenshot: {folder}/test_interrupted.png"
    if result.wasSuccessful() and result.testsRun:
        return None
    return f"Output of the programs:\n{session.log()}"


def interrupt_with(reason):
    def interrupt(*_):
        raise KeyboardInterrupt(reason)  # unittest does not count this as a failure of the test

    return interrupt


def clear_pictures(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for old_picture in folder.glob("test_*.png"):
        old_picture.unlink()


def find_tests(arguments):
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{pattern}*" for pattern in arguments.patterns] or None
    files = "website_test_*.py" if arguments.website else "test_*.py"
    return loader.discover(str(pathlib.Path(__file__).parent), files)


def parse_arguments():
    parser = argparse.ArgumentParser(description="Tests the whole program on a virtual desktop.")
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--website", action="store_true")
    parser.add_argument("-k", dest="patterns", action="append", default=[])
    kind = parser.add_mutually_exclusive_group(required=True)
    kind.add_argument("--composited", action="store_true")
    kind.add_argument("--plain", action="store_true")
    return parser.parse_args()


if __name__ == "__main__":
    main()
