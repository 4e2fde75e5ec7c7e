#!/usr/bin/python3 -B
"""Runs the tests of the whole program on a desktop of their own:

    run_tests.py PROGRAM FOLDER (--composited | --plain) [--website] [-k PATTERN]

FOLDER is for pictures of the screen where a test fails. With --website the tests are those that
serve a website, and the exit status is 77 where the machine does not allow that. The system's own Python is asked for
because Debian's bindings of the accessibility bus are known to no other.
"""

import argparse
import pathlib
import signal
import sys
import unittest

import network
from desktop_test import DesktopTest, PictureTakingResult
from session import Session

MOST_SECONDS = 3570  # on a very busy machine; each test has limits of its own
SKIPPED = 77
NO_WEBSITE = "Skipped: port 80 of 127.0.0.1 and network namespaces are not available."


def main():
    arguments = parse_arguments()
    # However this ends, it ends through the session's own exit, which leaves nothing behind.
    signal.signal(signal.SIGALRM, interrupt_saying(f"Not done in {MOST_SECONDS} s."))
    signal.signal(signal.SIGTERM, interrupt_saying("Ended from outside."))
    signal.alarm(MOST_SECONDS)
    make_empty(arguments.folder)
    if arguments.website and not network.prepare_for_a_website():
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
        return f"{reason} The screen is in {folder}/test_interrupted.png"
    if result.wasSuccessful() and result.testsRun:
        return None
    return f"What the programs said:\n{session.log()}"


def interrupt_saying(reason):
    def interrupt(*_):
        raise KeyboardInterrupt(reason)  # the one thing no test takes for its own failure

    return interrupt


def make_empty(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for old_picture in folder.glob("test_*.png"):
        old_picture.unlink()


def find_tests(arguments):
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{pattern}*" for pattern in arguments.patterns] or None
    files = "website_test_*.py" if arguments.website else "test_*.py"
    return loader.discover(str(pathlib.Path(__file__).parent), files)


def parse_arguments():
    parser = argparse.ArgumentParser(description="Drives the whole program on a virtual desktop.")
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
