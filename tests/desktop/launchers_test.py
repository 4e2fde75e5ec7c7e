"""The base of the launcher tests."""

import json

from applications import RecordingApplication
from desktop_test import DesktopTest
from launchers import encode
from library import FRESH_ID
from waiting import wait_for, wait_for_value
from x11 import press_keys


class LaunchersTest(DesktopTest):
    """An installed application, and the program's five slots."""

    def setUp(self):
        self.application = RecordingApplication(self.session, "Zither Notes", "Writes music down",
                                                arguments='--greeting "hello world" %U')
        self.addCleanup(self.application.remove)

    @property
    def launchers_file(self):
        return self.session.data_folder / "launchers.json"

    def start(self, slots=None):
        self.session.clear_data()
        self.session.data_folder.mkdir(mode=0o700)
        if slots is not None:
            self.launchers_file.write_text(encode(slots))
        return self.open_panel()

    def close_settings(self, panel):
        press_keys("Escape")
        wait_for("the card to close", lambda: not panel.has_any("Quick Launchers", "dialog"))

    def slot(self, card, number):
        return card.find(f"Launcher {number}", "panel")

    def saved_slots(self):
        try:
            return json.loads(self.launchers_file.read_text())
        except (FileNotFoundError, ValueError):
            return [None] * 5

    def expect_saved_slots(self, *slots):
        """Compares byte for byte, except the ids, which the program chooses."""
        wait_for_value("the slots", [None if slot is None else slot["target"] for slot in slots],
                       lambda: [slot and slot["target"] for slot in self.saved_slots()])
        expected = [slot and slot | {"id": saved["id"]}
                    for slot, saved in zip(slots, self.saved_slots())]
        for slot in filter(None, expected):
            self.assertRegex(slot["id"], FRESH_ID)
        self.assertEqual(self.launchers_file.read_text(), encode(expected))
