"""The base of the tests that run the whole program."""

import pathlib
import unittest

import library
from panel import Panel
from waiting import wait_for_value


class DesktopTest(unittest.TestCase):
    """Opens the panel on a prepared library, and closes it after the test."""

    session = None
    program = None
    pictures = None
    maxDiff = None

    def open_panel(self, tabs=None, active=0, environment=None, scale=1):
        """Without `tabs`, keeps the data folder. Adds `environment` to the session's."""
        if tabs:
            self.session.clear_data()
            self.session.data_folder.mkdir(mode=0o700)
            self.library_file.write_bytes(library.encode(tabs, active))
        self.panel = Panel(self.session, self.program, scale, environment)
        self.addCleanup(self.panel.end)
        return self.panel

    @property
    def library_file(self):
        return self.session.data_folder / "prompts.json"

    def expect_saved(self, *tabs, active=0, beside=()):
        """Compares byte for byte; an id of None matches any fresh id. `beside` names the other
        files that must be in the folder."""
        saved = b""

        def expected():
            return library.encode(library.with_fresh_ids(tabs, saved), active)

        def is_as_expected():
            nonlocal saved
            saved = self.library_file.read_bytes() if self.library_file.exists() else b""
            return saved == expected()

        try:
            wait_for_value("the file", True, is_as_expected)
        except AssertionError:
            self.assertEqual(saved.decode(), expected().decode())
        self.assertEqual({file.name for file in self.session.data_folder.iterdir()},
                         {"prompts.json", "Favicons", ".instance", *beside})


class PictureTakingResult(unittest.TextTestResult):
    """Saves a screenshot when a test fails."""

    def addFailure(self, test, err):
        self._take_picture(test)
        super().addFailure(test, err)

    def addError(self, test, err):
        self._take_picture(test)
        super().addError(test, err)

    def _take_picture(self, test):
        file = pathlib.Path(DesktopTest.pictures) / f"{test.id()}.png"
        DesktopTest.session.take_picture(file)
        self.stream.writeln(f"Screenshot: {file}")
