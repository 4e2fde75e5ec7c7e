"""Menus and dialogs, used by mouse, keyboard and accessibility actions."""

import launchers
from applications import RecordingApplication
from desktop_test import DesktopTest
from launchers import application, website
from library import known_id, node, tab
from processes import end
from tray import EmbeddingTray, Tray, has_tray_over_bus
from waiting import wait_for, wait_for_value
from x11 import click, clipboard, press_keys, set_clipboard, type_text, windows_named

OWN_ENTRIES = ["About Quillsatchel", "Settings…", "", "Hide Quillsatchel", "Quit Quillsatchel", "",
               "Edit"]


def names_in(menu):
    """The names of the entries; empty for separators."""
    return [entry.name for entry in menu.children()]


def selected_in(menu):
    return [entry.name for entry in menu.children() if entry.has("focused")]


class OwnerDeletedTest(DesktopTest):
    """Deletes the owner of an open menu or dialog through the accessibility tree."""

    def expect_gone(self, panel, menu):
        wait_for("the menu to close", menu.is_gone)
        press_keys("Escape")
        panel.find("New tab", "push button").press()
        wait_for("the program to respond", lambda: "New Tab" in panel.tab_names())

    def test_deleting_a_tab_closes_its_menu(self):
        panel = self.open_panel([tab("First", id=known_id(1)), tab("Second", id=known_id(2))])
        second = panel.tab("Second")
        menu = panel.menu_after(lambda: second.click(button=3))

        second.perform("Delete Tab")

        wait_for_value("the row of tabs", ["First"], panel.tab_names)
        self.expect_gone(panel, menu)

    def test_a_tab_can_be_deleted_by_its_open_menu(self):
        panel = self.open_panel([tab("First", id=known_id(1)), tab("Second", id=known_id(2))])
        menu = panel.menu_after(lambda: panel.tab("Second").click(button=3))

        menu.find("Delete Tab").press()

        wait_for_value("the row of tabs", ["First"], panel.tab_names)
        self.expect_gone(panel, menu)

    def test_deleting_a_renamed_tab_closes_the_menu_of_its_field(self):
        panel = self.open_panel([tab("First", id=known_id(1)), tab("Second", id=known_id(2))])
        second = panel.tab("Second")
        second.click(times=2)
        field = panel.find("Tab name", "text")
        menu = panel.menu_after(lambda: field.click(button=3))

        second.perform("Delete Tab")

        wait_for_value("the row of tabs", ["First"], panel.tab_names)
        self.expect_gone(panel, menu)

    def test_deleting_a_node_closes_its_color_menu(self):
        panel = self.open_panel([tab("Prompts", node("one", id=known_id(2)),
                                     node("two", id=known_id(3)), id=known_id(1))])
        first = panel.node(1, 2)
        menu = panel.menu_after(lambda: first.find("Node color", "push button").click())

        first.find("Delete node", "push button").press()

        wait_for_value("the nodes", ["two"], panel.node_texts)
        self.expect_gone(panel, menu)

    def test_deleting_a_node_closes_the_menu_of_its_text(self):
        panel = self.open_panel([tab("Prompts", node("one", id=known_id(2)),
                                     node("two", id=known_id(3)), id=known_id(1))])
        first = panel.node(1, 2)
        menu = panel.menu_after(lambda: first.find("Node text", "text").click(button=3))

        first.find("Delete node", "push button").press()

        wait_for_value("the nodes", ["two"], panel.node_texts)
        self.expect_gone(panel, menu)

    def test_deleting_a_tab_closes_a_color_menu_in_it(self):
        panel = self.open_panel([tab("First", id=known_id(1)),
                                 tab("Second", node("one", id=known_id(3)), id=known_id(2))],
                                active=1)
        palette = panel.node(1, 1).find("Node color", "push button")
        menu = panel.menu_after(palette.click)

        panel.tab("Second").perform("Delete Tab")

        wait_for_value("the row of tabs", ["First"], panel.tab_names)
        self.expect_gone(panel, menu)

    def test_closing_a_card_closes_the_menu_of_its_field(self):
        panel = self.open_panel([tab("First", id=known_id(1))])
        card = panel.open_settings()
        field = card.find("Launcher 1", "panel").find("Website", "text")
        menu = panel.menu_after(lambda: field.click(button=3))

        card.find("Close", "push button").press()

        wait_for("the card to close", card.is_gone)
        self.expect_gone(panel, menu)

    def test_cancelling_the_chooser_closes_the_menu_of_its_field(self):
        panel = self.open_panel([tab("First", id=known_id(1))])
        chooser = self.open_chooser(panel)
        field = chooser.find("Search applications", "text")
        menu = panel.menu_after(lambda: field.click(button=3))

        chooser.find("Cancel", "push button").press()

        wait_for("the chooser to close", chooser.is_gone)
        self.expect_gone(panel, menu)

    def test_cancelling_the_chooser_closes_a_menu_in_its_file_dialog(self):
        folder = self.session.folder / "home" / "Folder"
        folder.mkdir()
        self.addCleanup(folder.rmdir)
        for name in ("Sidebar", "Files"):
            with self.subTest(name):
                panel = self.open_panel([tab("First", id=known_id(1))])
                chooser = self.open_chooser(panel)
                chooser.find("Other…", "push button").press()
                view = panel.find(name, "list")
                wait_for("an entry of the list", lambda: view.find_all(role="list item"))
                view.find_all(role="list item")[0].click(button=3)

                chooser.find("Cancel", "push button").press()

                wait_for("the chooser to close", chooser.is_gone)
                press_keys("Escape")
                panel.find("New tab", "push button").press()
                wait_for("the program to respond", lambda: "New Tab" in panel.tab_names())
                panel.end()

    def open_chooser(self, panel):
        panel.open_settings().find("Launcher 1", "panel").find("Choose App…",
                                                               "push button").press()
        wait_for("a chooser", lambda: windows_named("Choose an Application"))
        return panel.find("Choose an Application", "dialog")


class EditMenuTest(DesktopTest):
    """The Edit menu, opened by keys."""

    def open_edit_menu(self, panel):
        panel.menu_after(lambda: press_keys("F10"))
        press_keys("Up")
        return panel.menu_after(lambda: press_keys("Right"))

    def enabled_in(self, menu):
        return [entry.name for entry in menu.children() if entry.name and entry.has("enabled")]

    def test_it_acts_on_the_text_with_the_focus(self):
        panel = self.open_panel([tab("Prompts", node("abc", id=known_id(2)), id=known_id(1))])
        panel.editor(1, 1).click()

        edit = self.open_edit_menu(panel)
        self.assertIn("Select All", self.enabled_in(edit))
        press_keys("Up", "Return")
        wait_for("the menu to close", edit.is_gone)
        edit = self.open_edit_menu(panel)
        self.assertIn("Copy", self.enabled_in(edit))
        press_keys("Down", "Return")  # from "Cut", the first enabled entry
        wait_for("the menu to close", edit.is_gone)
        wait_for_value("the clipboard", "abc", clipboard)
        press_keys("End")
        edit = self.open_edit_menu(panel)
        self.assertEqual(self.enabled_in(edit), ["Paste", "Select All"])
        press_keys("Return")

        wait_for_value("the node", ["abcabc"], panel.node_texts)
        type_text("d")
        wait_for_value("the node", ["abcabcd"], panel.node_texts)

    def test_it_opens_by_arrow_keys_after_a_right_click(self):
        panel = self.open_panel([tab("Prompts", node("abc", id=known_id(2)), id=known_id(1))])
        panel.editor(1, 1).click()
        press_keys("ctrl+a")
        bar = panel.window.frame()

        panel.menu_after(lambda: click(bar.center._replace(y=bar.y + 10), button=3))
        press_keys("Up")
        edit = panel.menu_after(lambda: press_keys("Right"))

        self.assertIn("Cut", self.enabled_in(edit))

    def test_it_acts_on_the_name_of_a_renamed_tab(self):
        panel = self.open_panel([tab("First", id=known_id(1))])
        panel.tab("First").click(times=2)
        wait_for("focus in the field", lambda: panel.focused_name() == "Tab name")
        set_clipboard("something else")

        edit = self.open_edit_menu(panel)
        self.assertEqual(self.enabled_in(edit), ["Cut", "Copy", "Paste", "Select All"])
        press_keys("Return")  # "Cut", the first enabled entry

        wait_for_value("the clipboard", "First", clipboard)
        wait_for("focus in the field", lambda: panel.focused_name() == "Tab name")
        self.assertEqual(panel.focused().text, "")
        type_text("Second")
        wait_for_value("the row of tabs", ["Second"], panel.tab_names)


class PanelMenuWithoutTrayTest(DesktopTest):
    """Without a tray, the panel's menu lists the launchers."""

    def start(self):
        self.application = RecordingApplication(self.session, "Zither & Lute",
                                                arguments="--tuned")
        self.addCleanup(self.application.remove)
        self.session.clear_data()
        self.session.data_folder.mkdir(mode=0o700)
        slots = [website("b_c", "https://b_c.example", known_id(2)), None,
                 application(self.application, known_id(1)), None, None]
        (self.session.data_folder / "launchers.json").write_text(launchers.encode(slots))
        return self.open_panel()

    def test_it_lists_the_launchers_and_starts_them(self):
        panel = self.start()
        wait_for("the menu with launchers", lambda: self.has_launchers(panel))

        menu = panel.menu_after(lambda: press_keys("F10"))
        self.assertEqual(names_in(menu), ["About Quillsatchel", "Settings…", "", "b_c",
                                          "Zither & Lute", *OWN_ENTRIES[2:]])
        press_keys("Down", "Down", "Down", "Return")

        wait_for("the application to start", self.application.recorded_start)
        self.assertEqual(self.session.opened_addresses(), [])

    def test_it_follows_changes_of_the_launchers(self):
        panel = self.start()
        card = panel.open_settings()
        card.find("Launcher 3", "panel").find("Clear launcher", "push button").press()
        press_keys("Escape")
        wait_for("the card to close", card.is_gone)

        menu = panel.menu_after(lambda: press_keys("F10"))

        self.assertEqual(names_in(menu), [*OWN_ENTRIES[:2], "", "b_c", *OWN_ENTRIES[2:]])

    def test_a_right_click_on_the_cup_opens_it(self):
        panel = self.start()
        cup = panel.find("About Quillsatchel", "push button")

        menu = panel.menu_after(lambda: cup.click(button=3))

        self.assertIn("b_c", names_in(menu))
        self.assertFalse(panel.has_any("About Quillsatchel", "dialog"))

    def test_it_has_no_launchers_with_a_tray(self):
        for kind in (Tray, EmbeddingTray):
            with self.subTest(kind.__name__):
                tray = kind(self.session)
                panel = self.start()
                wait_for("the icon in the tray", lambda: not self.has_launchers(panel), 15)
                menu = panel.menu_after(lambda: press_keys("F10"))
                self.assertEqual(names_in(menu), OWN_ENTRIES)
                press_keys("Escape")
                tray.end()
                wait_for("the launchers", lambda: self.has_launchers(panel))
                panel.end()

    def has_launchers(self, panel):
        menu = panel.menu_after(lambda: press_keys("F10"))
        names = names_in(menu)
        press_keys("Escape")
        wait_for("the menu to close", menu.is_gone)
        return "b_c" in names


class ColorMenuTest(DesktopTest):
    def test_the_current_color_is_checked(self):
        panel = self.open_panel([tab("Prompts", node("a", "green", id=known_id(2)),
                                     id=known_id(1))])
        palette = panel.node(1, 1).find("Node color", "push button")
        menu = panel.menu_after(palette.click)
        self.assertEqual(self.checked_in(menu), ["Green"])

        menu.find("Pink").press()
        wait_for("the menu to close", menu.is_gone)

        menu = panel.menu_after(palette.click)
        self.assertEqual(self.checked_in(menu), ["Pink"])
        press_keys("Escape")

    def checked_in(self, menu):
        return [entry.name for entry in menu.children() if entry.has("checked")]


class MenuKeysTest(DesktopTest):
    def test_shift_f10_opens_what_the_menu_key_opens(self):
        panel = self.open_panel([tab("First", node("abc", id=known_id(2)), id=known_id(1))])

        for stop in ("First", "New tab", "Node text", "Always on Top"):
            panel.step_to(stop)
            by_menu_key, by_shift_f10 = (self.names_after(panel, key)
                                         for key in ("Menu", "shift+F10"))
            with self.subTest(stop):
                self.assertTrue(by_menu_key)
                self.assertEqual(by_shift_f10, by_menu_key)

    def test_shift_f10_opens_the_menu_of_a_field_in_the_chooser(self):
        panel = self.open_panel([tab("First", id=known_id(1))])
        panel.open_settings().find("Launcher 1", "panel").find("Choose App…",
                                                               "push button").press()
        wait_for("focus in the search field", lambda: panel.focused_name() == "Search applications")

        self.assertIn("Select All", [name.split("\t")[0].replace("&", "")
                                     for name in self.names_after(panel, "shift+F10")])

    def names_after(self, panel, key):
        menu = panel.menu_after(lambda: press_keys(key))
        names = names_in(menu)
        press_keys("Escape")
        wait_for("the menu to close", menu.is_gone)
        return names

    def test_a_menu_opened_by_keyboard_starts_at_its_first_entry(self):
        panel = self.open_panel([tab("First", id=known_id(1)), tab("Second", id=known_id(2))])
        panel.step_to("First")

        for key, first in (("F10", "About Quillsatchel"), ("shift+F10", "Rename Tab")):
            with self.subTest(key):
                menu = panel.menu_after(lambda: press_keys(key))
                wait_for_value("the selected entry", [first], lambda: selected_in(menu))
                press_keys("Escape")
                wait_for("the menu to close", menu.is_gone)

    def test_a_tab_is_renamed_and_deleted_by_its_menu(self):
        first = tab("First", id=known_id(1))
        panel = self.open_panel([first, tab("Second", id=known_id(2))])
        panel.step_to("Second")

        menu = panel.menu_after(lambda: press_keys("shift+F10"))
        press_keys("Return")
        wait_for("focus in the field", lambda: panel.focused_name() == "Tab name")
        type_text("Other")
        press_keys("Return")
        wait_for("focus on the chip", lambda: panel.focused_name() == "Other")

        menu = panel.menu_after(lambda: press_keys("shift+F10"))
        press_keys("Down", "Return")
        wait_for("the menu to close", menu.is_gone)
        self.expect_saved(first)
