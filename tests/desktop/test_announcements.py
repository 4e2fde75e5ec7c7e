"""Events that a screen reader announces."""

from accessibility import EventObserver
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

    def test_copying_renames_the_button_to_copied_and_back(self):
        events = EventObserver("object:property-change:accessible-name")

        self.panel.find("Copy", "push button").press()

        events.wait_for("Copied", "push button")
        events.clear()
        events.wait_for("Copy", "push button")

    def test_choosing_a_tab_announces_both_tabs(self):
        events = EventObserver("object:state-changed:selected")

        self.panel.tab("Letters").press()

        events.wait_for("Letters", "page tab")
        events.wait_for("Prompts", "page tab")  # deselected

    def test_each_failed_dictation_is_announced(self):
        events = EventObserver("object:state-changed:showing")

        for _ in range(2):
            events.clear()
            self.panel.find("Dictate", "push button").press()
            events.wait_for(NO_MICROPHONE, "alert")

    def test_each_invalid_website_is_announced(self):
        card = self.panel.open_settings()
        card.find("Launcher 2", "panel").find("Website", "text").grab_focus()
        type_text("ftp://example.com")
        events = EventObserver("object:state-changed:showing")

        for _ in range(2):
            events.clear()
            press_keys("Return")
            events.wait_for(INVALID_WEBSITE, "alert")
