"""What a screen reader is told without asking."""

from accessibility import Ear
from desktop_test import DesktopTest
from library import known_id, node, tab
from x11 import press_keys, type_text

INVALID_WEBSITE = "Enter a valid http or https website."
NO_MICROPHONE = "The microphone could not be started."


class AnnouncementsTest(DesktopTest):
    def setUp(self):
        self.open_panel([tab("Prompts", node("a", id=known_id(2)), id=known_id(1)),
                         tab("Letters", id=known_id(3))],
                        environment={"PULSE_SERVER": f"unix:{self.session.folder}/nothing"})

    def test_that_a_text_was_copied_and_for_how_long(self):
        ear = Ear("object:property-change:accessible-name")

        self.panel.find("Copy", "push button").press()

        ear.wait_for("Copied", "push button")
        ear.forget()
        ear.wait_for("Copy", "push button")

    def test_which_tab_is_chosen(self):
        ear = Ear("object:state-changed:selected")

        self.panel.tab("Letters").press()

        ear.wait_for("Letters", "page tab")
        ear.wait_for("Prompts", "page tab")  # it no longer is

    def test_why_there_is_no_dictation(self):
        ear = Ear("object:state-changed:showing")

        for _ in range(2):
            ear.forget()
            self.panel.find("Dictate", "push button").press()
            ear.wait_for(NO_MICROPHONE, "alert")

    def test_each_time_that_a_website_is_not_valid(self):
        card = self.panel.open_settings()
        card.find("Launcher 2", "panel").find("Website", "text").grab_focus()
        type_text("ftp://example.com")
        ear = Ear("object:state-changed:showing")

        for _ in range(2):
            ear.forget()
            press_keys("Return")
            ear.wait_for(INVALID_WEBSITE, "alert")
