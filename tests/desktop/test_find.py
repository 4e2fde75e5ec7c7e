"""Finding nodes in all tabs by keyboard."""

from accessibility import EventObserver
from desktop_test import DesktopTest
from library import known_id, node, tab
from waiting import wait_for, wait_for_value
from x11 import clipboard, press_keys, set_clipboard, type_text

FIELD = "Find in all tabs"
MAILS = tab("Mails", *(node(text, id=known_id(10 + number)) for number, text in enumerate(
    ("Reply shortly.", "Decline politely.", "Thank the sender.", "Ask for a date."))),
    id=known_id(1))
CODE = tab("Code", *(node(text, id=known_id(20 + number)) for number, text in enumerate(
    ("Review this change.", "Explain this error.", "Write a test for the change."))),
    id=known_id(2))
TEXTS = tab("Texts", *(node(text, id=known_id(30 + number)) for number, text in enumerate(
    ("Shorten this draft.", "Review the draft as a strict editor.", "Translate the draft."))),
    id=known_id(3))
LIBRARY = (MAILS, CODE, TEXTS)


class FindTest(DesktopTest):
    def setUp(self):
        self.open_panel(list(LIBRARY))
        set_clipboard("something else")

    def open_card(self):
        press_keys("ctrl+f")
        wait_for("focus in the field", self.has_focus)
        return self.panel.find("Find", "dialog")

    def has_focus(self):
        return self.panel.focused_name() == FIELD

    def test_return_copies_the_node_found_by_two_words(self):
        card = self.open_card()
        type_text("draft review")
        card.find("1 node", "alert")
        names = EventObserver("object:property-change:accessible-name")

        press_keys("Return")

        names.wait_for("Copied", "push button")
        wait_for_value("the clipboard", "Review the draft as a strict editor.", clipboard)
        wait_for("the card to close", card.is_gone)
        self.assertEqual(self.panel.active_tab_names(), ["Texts"])
        self.expect_saved(*LIBRARY, active=2)

    def test_ctrl_return_selects_the_words_found_in_the_text(self):
        card = self.open_card()
        type_text("chang")
        press_keys("Down", "ctrl+Return")

        wait_for("the card to close", card.is_gone)
        wait_for("focus in the text", lambda: self.panel.focused_name() == "Node text")
        type_text("patch")  # replaces the selection
        changed = tab("Code", *CODE["blocks"][:2],
                      node("Write a test for the patche.", id=known_id(22)), id=known_id(2))
        self.expect_saved(MAILS, changed, TEXTS, active=1)
        self.assertEqual(clipboard(), "something else")

    def test_escape_changes_nothing(self):
        saved = self.library_file.stat()
        self.panel.step_to("Node text")
        card = self.open_card()
        type_text("draft")
        press_keys("Down", "Escape")

        wait_for("the card to close", card.is_gone)
        wait_for("focus in the text", lambda: self.panel.focused_name() == "Node text")
        self.assertEqual(clipboard(), "something else")
        self.assertEqual(self.panel.active_tab_names(), ["Mails"])
        self.expect_saved(*LIBRARY)
        self.assertEqual((self.library_file.stat().st_ino, self.library_file.stat().st_mtime_ns),
                         (saved.st_ino, saved.st_mtime_ns))

    def test_typing_on_a_control_finds_and_typing_in_a_node_does_not(self):
        self.panel.step_to("Node text")
        press_keys("ctrl+End")
        type_text("x")
        changed = tab("Mails", node("Reply shortly.x", id=known_id(10)), *MAILS["blocks"][1:],
                      id=known_id(1))
        self.expect_saved(changed, CODE, TEXTS)
        self.assertFalse(self.panel.has_any("Find", "dialog"))

        self.panel.step_to("Copy")
        type_text("sho")
        wait_for("focus in the field", self.has_focus)
        wait_for_value("the query", "sho", lambda: self.panel.find(FIELD, "text").text)
        self.panel.find("2 nodes", "alert")

    def test_the_hits_are_named_and_the_active_one_is_reported(self):
        card = self.open_card()
        type_text("draft")
        hits = card.find("Nodes found", "list")
        hits.find("Shorten this draft.", "list item")
        events = EventObserver("object:state-changed:focused")

        press_keys("Down")

        events.wait_for("Review the draft as a strict editor.", "list item")
        self.assertTrue(self.panel.find(FIELD, "text").has("focused"))

    def test_the_number_of_hits_is_announced(self):
        self.open_card()
        events = EventObserver("object:state-changed:showing")

        type_text("draft")
        events.wait_for("3 nodes", "alert")
        type_text("zzz")
        events.wait_for("No nodes found", "alert")

    def test_the_last_query_is_selected_for_a_minute(self):
        card = self.open_card()
        type_text("draft")
        press_keys("Escape")
        wait_for("the card to close", card.is_gone)

        card = self.open_card()
        card.find("3 nodes", "alert")
        type_text("error")
        card.find("1 node", "alert")
        self.assertEqual(self.panel.find(FIELD, "text").text, "error")
