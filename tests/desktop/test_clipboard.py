"""Pasting from other programs, including ones that do not answer or use unusual formats."""

import contextlib
import pathlib
import subprocess
import time

from desktop_test import DesktopTest
from library import known_id, node, tab
from processes import end
from waiting import wait_for
from x11 import press_keys, type_text

# The program waits one second for a clipboard; Qt alone would wait ten. The rest is for a busy
# machine.
MAX_SECONDS = 4

# The program waits 0.3 seconds for a silent clipboard manager; Qt alone would wait five.
MAX_SECONDS_TO_EXIT = 2


class ClipboardTest(DesktopTest):
    def setUp(self):
        self.open_panel([tab("Prompts", node(id=known_id(2)), id=known_id(1))])

    def clipboard_of(self, behaviour, **offers):
        """Another program owns the clipboard. `offers` maps format names to bytes."""
        return self.selection_of("CLIPBOARD", behaviour, **offers)

    @contextlib.contextmanager
    def selection_of(self, selection, behaviour, **offers):
        """Returns the file of the last offer."""
        formats = []
        for number, (name, content) in enumerate(offers.items()):
            file = self.session.folder / f"offer-{number}"
            file.write_bytes(content)
            formats += [name, file]
        program = self.program.parent / "tests" / "selection_owner"
        owner = self.session.start(program, selection, behaviour, *formats,
                                   stdout=subprocess.PIPE)
        try:
            self.assertEqual(owner.stdout.readline(), b"ready\n")
            yield pathlib.Path(formats[-1]) if formats else None
        finally:
            end(owner)
            owner.stdout.close()

    def expect_text(self, text):
        self.expect_saved(tab("Prompts", node(text, id=known_id(2)), id=known_id(1)))

    def focus_node(self):
        self.panel.editor(1, 1).click()
        wait_for("focus in the node", lambda: self.panel.focused_name() == "Node text")


class SilentOwnerTest(ClipboardTest):
    def test_the_paste_button_gives_up_after_a_second(self):
        with self.clipboard_of("silent"):
            self.focus_node()
            started = time.monotonic()
            self.panel.find("Paste", "push button").click()
            self.expect_typing_works_since(started)

    def test_the_paste_shortcut_gives_up_after_a_second(self):
        with self.clipboard_of("silent"):
            self.focus_node()
            started = time.monotonic()
            press_keys("ctrl+v")
            self.expect_typing_works_since(started)

    def test_the_context_menu_opens_after_a_second_without_paste(self):
        with self.clipboard_of("silent"):
            self.focus_node()
            started = time.monotonic()
            menu = self.panel.menu_after(lambda: self.panel.editor(1, 1).click(button=3))
            self.assertLess(time.monotonic() - started, MAX_SECONDS)
            self.assertFalse(menu.find("Paste").has("enabled"))
            press_keys("Escape")
            wait_for("the menu to close", menu.is_gone)

    def test_a_middle_click_gives_up_after_a_second(self):
        with self.selection_of("PRIMARY", "silent"):
            self.focus_node()
            started = time.monotonic()
            self.panel.editor(1, 1).click(button=2)
            self.expect_typing_works_since(started)

    def test_an_endless_answer_is_cut_off_after_a_second(self):
        with self.clipboard_of("slow", UTF8_STRING=b"x" * 1000):
            self.focus_node()
            started = time.monotonic()
            press_keys("ctrl+v")
            self.expect_typing_works_since(started)

    def expect_typing_works_since(self, started):
        type_text("x")
        wait_for("typing to be shown", lambda: self.panel.editor(1, 1).text == "x")
        self.assertLess(time.monotonic() - started, MAX_SECONDS)
        self.expect_text("x")


class FormatsTest(ClipboardTest):
    def test_pastes_text_with_a_charset_and_keeps_its_byte_order_mark(self):
        text = "\ufeffGr\u00fc\u00dfe"
        for paste in (lambda: press_keys("ctrl+v"),
                      lambda: self.panel.find("Paste", "push button").click()):
            with self.clipboard_of("answers", **{"text/plain;charset=utf-8": text.encode()}):
                self.focus_node()
                press_keys("ctrl+a", "Delete")
                wait_for("the offer to paste", lambda: self.panel.has_any("Paste"))
                paste()
                self.expect_text(text)

    def test_a_middle_click_inserts_the_primary_selection(self):
        self.focus_node()
        type_text("before ")
        with self.selection_of("PRIMARY", "answers", UTF8_STRING=b"selected"):
            self.panel.editor(1, 1).click(button=2)
            self.expect_text("before selected")


class EndTest(ClipboardTest):
    """Handover of copied text to a clipboard manager at exit."""

    def test_a_silent_clipboard_manager_does_not_delay_the_exit(self):
        for copy in (self.copy_node, self.select_text, self.cut_text):
            with self.subTest(copy.__name__), \
                    self.selection_of("CLIPBOARD_MANAGER", "silent"):
                copy()
                self.assertLess(self.seconds_to_end(), MAX_SECONDS_TO_EXIT)
            self.setUp()

    def test_a_clipboard_manager_gets_the_text(self):
        with self.selection_of("CLIPBOARD_MANAGER", "saves", SAVE_TARGETS=b"") as file:
            self.copy_node()
            self.assertLess(self.seconds_to_end(), MAX_SECONDS_TO_EXIT)
            self.assertEqual(file.read_text(), "copied")

    def copy_node(self):
        self.focus_node()
        type_text("copied")
        self.expect_text("copied")
        self.panel.find("Copy", "push button").click()
        self.panel.find("Copied", "push button")

    def select_text(self):
        self.focus_node()
        type_text("selected")
        press_keys("ctrl+a")
        self.expect_text("selected")

    def cut_text(self):
        self.select_text()
        press_keys("ctrl+x")
        self.expect_text("")

    def seconds_to_end(self):
        started = time.monotonic()
        self.assertEqual(self.panel.end(), 0)
        return time.monotonic() - started
