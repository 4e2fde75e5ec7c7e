#!/usr/bin/python3 -B
"""Takes screenshots of the panel in many states, for review by eye:

    screenshots.py PROGRAM FOLDER [SCALE]...

Takes one set per scale (default: 1 and 2), named by state and scale.
"""

import argparse
import pathlib
import time

import launchers
import library
from library import node, tab
from applications import RecordingApplication
from launchers import application, website
from panel import Panel
from session import Session
from tray import Tray
from waiting import wait_for
from x11 import (Point, Rect, button_held, glide, move_pointer, open_colored_window, press_keys,
                 run, type_text, windows_named)

MARGIN = 60
BACKDROP_COLOR = "#41576B"
CUP_COLOR = (0xE8, 0x29, 0x2B)
COLORS = ["none", "red", "orange", "yellow", "green", "blue", "purple", "pink"]
LONG_TEXT = "Answer in the language of the question. " * 12

WRITING = tab(
    "Writing",
    node("Summarise the text below for a colleague who has two minutes.", "green"),
    node("Rewrite this paragraph in plain words.\nKeep every figure and every name."),
    node("https://quillsatchel.example/house-style", "blue"),
    node(LONG_TEXT, "orange"),
    node())
RAINBOW = tab("Colors", *(node(f"This node is {color}.", color) for color in COLORS))
MANY_TABS = [WRITING, *(tab(name) for name in ("", "R", "Letters", "A name that is far too long "
                                               "for any chip", "Übersetzungen", "日本語"))]
LONG_WORD = "https://quillsatchel.example/" + "drafts-and-drafts-of-drafts-" * 12
REVIEWS = tab(
    "Reviews",
    node("Review this draft as a strict editor: list what is unclear, what is missing and what is "
         "wrong, each with a quotation and a better version.", "purple"),
    node("Draft a reply.", "red"),
    node(LONG_WORD, "blue"),
    node("مسودة draft للمراجعة", "pink"),
    node("下書き: 日本語の draft をレビューしてください。" * 4, "yellow"),
    node("A draft with a 👍🏽 and a ❤️ for the team"),
    node("x" * 1_000_000 + " draft", "orange"),
    node("\n\n  One line\n\n\n\tand another\nDRAFT\n", "green"),
    node(),
    node("drafting, drafted, drafts"),
    node("An overdraft, Réďràft"))
FOCUS_STOPS = [("Writing", "tab"), ("New tab", "new-tab"), ("Drag node to reorder", "handle"),
               ("Node color", "palette"), ("Delete node", "trash"), ("Node text", "editor"),
               ("Dictate", "dictate"), ("Copy", "copy"), ("New Node", "new-node"),
               ("Close", "close"), ("About Quillsatchel", "icon"), ("Always on Top", "switch")]


class Photographer:
    """Opens the panel with a new library for each state, and takes screenshots of it."""

    def __init__(self, session, program, folder, scale):
        self._session, self._program, self._folder, self._scale = session, program, folder, scale

    def take_all(self):
        self.take_static_states()
        self.take_interactions()
        self.take_overlays()
        self.take_focus()

    def take_static_states(self):
        self.open([tab("Prompts")], lambda panel: self.take(panel, "empty"))
        self.open([WRITING], lambda panel: self.take(panel, "nodes"))
        self.open([RAINBOW], lambda panel: self.take(panel, "colors", height=1540))
        self.open(MANY_TABS, lambda panel: self.take(panel, "smallest", width=390, height=420))
        self.open([WRITING], lambda panel: self.take(panel, "wide", width=900, height=500))

    def take_interactions(self):
        self.open([WRITING], self.take_drag)
        self.open(MANY_TABS, self.take_renaming)
        self.open([WRITING], self.take_hover)
        self.open([WRITING], self.take_copied)
        self.open([WRITING], self.take_selection)

    def take_overlays(self):
        self.open([WRITING], self.take_about_card)
        self.open([WRITING], self.take_settings_card)
        self.open([WRITING], self.take_filled_settings_card, self.five_launchers())
        self.open([WRITING, RAINBOW, REVIEWS], self.take_find_card)
        self.open([WRITING], self.take_chooser)
        self.open([WRITING], self.take_color_menu)
        self.open([WRITING], self.take_tab_menu)
        self.open([WRITING], self.take_panel_menu)
        self.open([WRITING], self.take_tray_menu, self.five_launchers())

    def take_drag(self, panel):
        start = self.center_of(panel.node(1, 5).find("Drag node to reorder"))
        with button_held(start):
            glide(start, 5 * self._scale, 150 * self._scale)
            self.take(panel, "drag")
            press_keys("Escape")

    def take_renaming(self, panel):
        panel.step_to("Writing")
        press_keys("F2")
        wait_for("the field", lambda: panel.focused_name() == "Tab name")
        self.take(panel, "renaming-begun")
        type_text("Correspond")
        self.take(panel, "renaming")

    def take_hover(self, panel):
        for name in ("Copy", "Delete node", "Close", "New Node"):
            move_pointer(self.center_of(panel.find(name, "push button")))
            self.take(panel, f"hover-{name.lower().replace(' ', '-')}", seconds_to_settle=1.5)

    def take_copied(self, panel):
        panel.find("Copy", "push button").press()
        panel.find("Copied", "push button")
        self.take(panel, "copied", seconds_to_settle=0.2)

    def take_selection(self, panel):
        panel.step_to("Node text")
        press_keys("ctrl+a")
        self.take(panel, "selected-text")

    def take_about_card(self, panel):
        panel.find("About Quillsatchel", "push button").press()
        panel.find("About Quillsatchel", "dialog").find("Close", "push button")
        self.take(panel, "about")

    def take_settings_card(self, panel):
        card = panel.open_settings()
        self.take(panel, "settings-empty")
        editor = card.find("Launcher 2", "panel")
        editor.find("Website", "text").grab_focus()
        type_text("ftp://example.com")
        press_keys("Return")
        editor.find("Enter a valid http or https website.")
        self.take(panel, "settings-error")
        self.take(panel, "settings-smallest", width=390, height=420)

    def take_filled_settings_card(self, panel):
        panel.open_settings()
        self.take(panel, "settings-full")
        for count in range(4):
            panel.step()
            self.take(panel, f"settings-focus-{count}")
        self.take(panel, "settings-full-smallest", width=390, height=420)

    def five_launchers(self):
        self._notes = RecordingApplication(self._session, "Zither Notes", "Writes music down")
        return [application(self._notes, library.known_id(1)),
                website("example.com", "https://www.example.com", library.known_id(2)),
                application(self._notes, library.known_id(3)),
                website("a-rather-long-name-for-a-host.of-a-website.example.com",
                        "https://a-rather-long-name-for-a-host.of-a-website.example.com/with/a/"
                        "path?and=query", library.known_id(4)),
                website("localhost", "http://localhost:8080/", library.known_id(5))]

    def take_find_card(self, panel):
        press_keys("ctrl+f")
        wait_for("focus in the field", lambda: panel.focused_name() == "Find in all tabs")
        self.take(panel, "find-all")
        type_text("draft")
        self.take(panel, "find")
        press_keys("Down", "Down")
        self.take(panel, "find-selected")
        self.take(panel, "find-smallest", width=390, height=420)
        type_text(" review")
        self.take(panel, "find-two-words")
        press_keys("Tab")
        self.take(panel, "find-focus")
        type_text("zzz")
        self.take(panel, "find-nothing")

    def take_chooser(self, panel):
        card = panel.open_settings()
        card.find("Launcher 1", "panel").find("Choose App…", "push button").press()
        chooser, = wait_for("a chooser", lambda: windows_named("Choose an Application"))
        wait_for("focus in the search field", lambda: panel.focused_name() == "Search applications")
        self.take(panel, "chooser", window=chooser)
        type_text("z")
        self.take(panel, "chooser-searching", window=chooser)
        type_text("zz")
        self.take(panel, "chooser-nothing-found", window=chooser)

    def take_color_menu(self, panel):
        panel.step_to("Node color")
        panel.menu_after(lambda: press_keys("Return"))
        press_keys("Down")
        self.take(panel, "color-menu")

    def take_tab_menu(self, panel):
        panel.step_to("Writing")
        panel.menu_after(lambda: press_keys("Menu"))
        self.take(panel, "tab-menu")

    def take_panel_menu(self, panel):
        panel.menu_after(lambda: press_keys("F10"))
        self.take(panel, "panel-menu")
        press_keys("Up")
        panel.menu_after(lambda: press_keys("Right"))
        self.take(panel, "panel-menu-edit")

    def take_tray_menu(self, panel):
        tray = Tray(self._session)
        try:
            self.take(panel, "tray-menu", window=tray.open_menu(CUP_COLOR))
        finally:
            tray.end()

    def take_focus(self):
        def follow(panel):
            for name, file in FOCUS_STOPS:
                panel.step_to(name)
                self.take(panel, f"focus-{file}")

        self.open([WRITING], follow)

    def open(self, tabs, use, slots=None):
        self._session.clear_data()
        self._session.data_folder.mkdir(mode=0o700)
        file = self._session.data_folder / "prompts.json"
        file.write_bytes(library.encode(with_ids(tabs)))
        if slots:
            (self._session.data_folder / "launchers.json").write_text(launchers.encode(slots))
        panel = Panel(self._session, self._program, self._scale)
        try:
            move_pointer(Point(0, 0))
            use(panel)
        finally:
            panel.end()

    def take(self, panel, state, width=None, height=None, seconds_to_settle=0.6, window=None):
        window = window or panel.window
        frame = window.frame()
        if width or height:
            size = (width * self._scale if width else frame.width,
                    height * self._scale if height else frame.height)
            window.request_size(*size)
            window.request_position(60 * self._scale, 60 * self._scale)
            wait_for("the new size", lambda: window.frame().size == size)
        time.sleep(seconds_to_settle)  # for animations and pending repaints
        self.save(window.frame(), self._folder / f"{state}@{self._scale}x.png")

    def save(self, frame, file):
        around = MARGIN * self._scale
        x, y = max(frame.x - around, 0), max(frame.y - around, 0)
        run("import", "-window", "root", "-crop",
            f"{frame.width + 2 * around}x{frame.height + 2 * around}+{x}+{y}", "+repage", file)

    def center_of(self, control):
        center = control.frame.center
        return Point(center.x * self._scale, center.y * self._scale)


def with_ids(tabs):
    """`tabs` with consecutive ids."""
    numbers = iter(range(1, 1000))
    return [each | {"id": library.known_id(next(numbers)),
                    "blocks": [block | {"id": library.known_id(next(numbers))}
                               for block in each["blocks"]]} for each in tabs]


def main():
    parser = argparse.ArgumentParser(description="Takes screenshots of the panel in many states.")
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("scales", type=int, nargs="*", default=[1, 2])
    arguments = parser.parse_args()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    largest = max(arguments.scales)
    screen = Rect(0, 0, 1024 * largest, 1680 * largest)
    with Session(is_composited=True, screen=screen.size) as session:
        open_colored_window(session, "backdrop", BACKDROP_COLOR, screen)
        for scale in arguments.scales:
            photographer = Photographer(session, arguments.program.resolve(), arguments.folder,
                                        scale)
            photographer.take_all()


if __name__ == "__main__":
    main()
