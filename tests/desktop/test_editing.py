"""Editing tabs and nodes with mouse and keys, checked in the saved file."""

import time

from desktop_test import DesktopTest
from library import known_id, node, tab
from waiting import wait_for, wait_for_value
from x11 import (Point, button_held, click, clipboard, glide, press_keys, set_clipboard, type_text)

COLOR_TITLES = ["None", "Red", "Orange", "Yellow", "Green", "Blue", "Purple", "Pink"]
COPIED_MARK_SECONDS = 1.4
WHEEL_DOWN = 5
NOTCHES = 3  # of 72 points each


class TabsTest(DesktopTest):
    def test_a_double_click_renames_a_new_tab_in_place(self):
        prompts = tab("Prompts", node("kept", id=known_id(2)), id=known_id(1))
        panel = self.open_panel([prompts])

        panel.find("New tab", "push button").click()
        wait_for_value("the row of tabs", ["Prompts", "New Tab"], panel.tab_names)
        wait_for_value("the active tab", ["New Tab"], panel.active_tab_names)
        self.expect_saved(prompts, tab("New Tab"), active=1)

        panel.tab("New Tab").click(times=2)
        wait_for("focus in the field", lambda: panel.focused_name() == "Tab name")
        type_text("Mail / private")
        wait_for_value("the row of tabs", ["Prompts", "Mail / private"], panel.tab_names)
        press_keys("Return")
        wait_for("the field to close", lambda: not panel.has_any("Tab name"))
        self.expect_saved(prompts, tab("Mail / private"), active=1)

    def test_a_click_on_another_chip_ends_renaming_and_selects_it(self):
        first, second = tab("First", id=known_id(1)), tab("Second", id=known_id(2))
        panel = self.open_panel([first, second])

        panel.tab("Second").click(times=2)
        wait_for("focus in the field", lambda: panel.focused_name() == "Tab name")
        type_text("Later")
        wait_for_value("the row of tabs", ["First", "Later"], panel.tab_names)
        panel.tab("First").click()

        wait_for_value("the active tab", ["First"], panel.active_tab_names)
        wait_for("the field to close", lambda: not panel.has_any("Tab name"))
        self.expect_saved(first, second | {"name": "Later"}, active=0)

    def test_the_context_menu_deletes_a_tab_but_not_the_last(self):
        first, second = tab("First", id=known_id(1)), tab("Second", id=known_id(2))
        panel = self.open_panel([first, second], active=1)

        menu = panel.menu_after(lambda: panel.tab("Second").click(button=3))
        menu.find("Delete Tab").click()
        wait_for_value("the row of tabs", ["First"], panel.tab_names)
        self.expect_saved(first, active=0)

        menu = panel.menu_after(lambda: panel.tab("First").click(button=3))
        self.assertTrue(menu.find("Rename Tab").has("enabled"))
        self.assertFalse(menu.find("Delete Tab").has("enabled"))


class NodesTest(DesktopTest):
    def test_a_new_node_has_the_focus(self):
        panel = self.open_panel([tab("Prompts", id=known_id(1))])
        self.assertTrue(panel.has_any("No nodes yet"))

        panel.find("New Node", "push button").click()
        wait_for("focus in the editor", lambda: panel.focused_name() == "Node text")
        type_text("Sum up, then\t\"list\" the rest.")

        self.assertFalse(panel.has_any("No nodes yet"))
        self.expect_saved(tab("Prompts", node("Sum up, then\t\"list\" the rest."), id=known_id(1)))

    def test_the_palette_colors_a_node(self):
        panel = self.open_panel([tab("Prompts", node("grass", id=known_id(2)), id=known_id(1))])

        menu = panel.menu_after(panel.node(1, 1).find("Node color", "push button").click)
        self.assertEqual([item.name for item in menu.find_all()], COLOR_TITLES)
        menu.find("Green").click()

        wait_for("the menu to close", menu.is_gone)
        self.expect_saved(tab("Prompts", node("grass", "green", known_id(2)), id=known_id(1)))

    def test_a_node_dragged_down_by_250_points_moves_two_places(self):
        one, two, three, four = (node(text, id=known_id(number))
                                 for number, text in enumerate(["1", "2", "3", "4"], start=2))
        panel = self.open_panel([tab("Prompts", one, two, three, four, id=known_id(1))])

        start = panel.node(1, 4).find("Drag node to reorder").frame.center
        with button_held(start):
            glide(start, 0, 250)

        wait_for_value("the nodes' order", "2", lambda: panel.editor(1, 4).text)
        self.assertEqual(panel.editor(3, 4).text, "1")
        self.expect_saved(tab("Prompts", two, three, one, four, id=known_id(1)))

    def test_the_accessibility_tree_lists_nodes_in_order(self):
        nodes = [node(text, id=known_id(number)) for number, text in enumerate("abcd", start=2)]
        panel = self.open_panel([tab("Prompts", *nodes, id=known_id(1))])

        self.move(1, "Move Down")
        wait_for_value("the order of the tree", ["b", "a", "c"], self.leading_texts)
        panel.node(1, 4).find("Delete node", "push button").press()
        wait_for_value("the order of the tree", ["a", "c", "d"], self.leading_texts)
        self.move(3, "Move Up", count=3)
        wait_for_value("the order of the tree", ["a", "d", "c"], self.leading_texts)
        self.assertEqual([name for name in panel.names_of("panel") if name.startswith("Node ")],
                         ["Node 1 of 3", "Node 2 of 3", "Node 3 of 3"])

    def leading_texts(self):
        return self.panel.node_texts()[:3]

    def move(self, number, direction, count=4):
        self.panel.node(number, count).find("Drag node to reorder").perform(direction)

    def test_a_short_drag_moves_nothing(self):
        one, two = node("1", id=known_id(2)), node("2", id=known_id(3))
        panel = self.open_panel([tab("Prompts", one, two, id=known_id(1))])

        start = panel.node(1, 2).find("Drag node to reorder").frame.center
        with button_held(start):
            glide(start, 100, 23)

        panel.find("New Node").click()
        self.expect_saved(tab("Prompts", one, two, node(), id=known_id(1)))

    def test_a_drag_starts_at_24_points_at_every_scale(self):
        one, two = node("1", id=known_id(2)), node("2", id=known_id(3))
        for scale, pixels in (1, 24), (1.5, 36), (2, 48):
            self.open_panel([tab("Prompts", one, two, id=known_id(1))],
                            environment={"QT_SCALE_FACTOR": str(scale)})
            for offset in range(3):  # pixels; at scale 1.5 each starts at another third of a point
                with self.subTest(scale=scale, offset=offset):
                    self.drag_first_node(scale, offset, pixels - 1)
                    self.drag_first_node(scale, offset, pixels)
                    self.expect_order("2", "1")
                    self.drag_first_node(scale, offset, pixels)
                    self.expect_order("1", "2")
            self.panel.end()

    def drag_first_node(self, scale, offset, pixels):
        handle = self.panel.node(1, 2).find("Drag node to reorder").frame.center
        start = Point(round(handle.x * scale), round(handle.y * scale) + offset)
        with button_held(start):
            glide(start, 0, pixels)

    def expect_order(self, *texts):
        wait_for_value("the nodes' order", list(texts), lambda: [
            self.panel.editor(number, len(texts)).text for number in range(1, len(texts) + 1)])

    def test_scrolling_during_a_drag_moves_the_node(self):
        nodes = [node(text, id=known_id(number)) for number, text in enumerate("abcdef", start=2)]
        panel = self.open_panel([tab("Prompts", *nodes, id=known_id(1))])

        start = panel.node(1, 6).find("Drag node to reorder").frame.center
        with button_held(start):
            end = glide(start, 0, 50)
            click(end, WHEEL_DOWN, times=NOTCHES)
            glide(end, 0, 2)

        a, b, c, *others = nodes
        self.expect_saved(tab("Prompts", b, c, a, *others, id=known_id(1)))

    def test_copy_shows_copied_for_1_4_seconds(self):
        panel = self.open_panel([tab("Prompts", node("to be copied", id=known_id(2)),
                                     id=known_id(1))])
        set_clipboard("something else")

        pressed = time.monotonic()
        panel.find("Copy", "push button").press()
        panel.find("Copied", "push button")
        marked = last_seen = time.monotonic()
        while panel.has_any("Copied", "push button") and last_seen < marked + 5:
            last_seen = time.monotonic()
        unmarked = time.monotonic()

        self.assertEqual(clipboard(), "to be copied")
        self.assertTrue(panel.has_any("Copy", "push button"))
        self.assertGreater(unmarked - pressed, COPIED_MARK_SECONDS - 0.1)
        self.assertLess(last_seen - marked, COPIED_MARK_SECONDS + 0.8)

    def test_paste_fills_an_empty_node_and_can_be_undone(self):
        panel = self.open_panel([tab("Prompts", node(id=known_id(2)), id=known_id(1))])
        set_clipboard("from elsewhere\nin two lines")

        editor = panel.editor(1, 1)
        editor.click()
        type_text("mine")
        wait_for("the paste button to disappear", lambda: not panel.has_any("Paste"))
        press_keys("ctrl+a", "Delete")
        panel.find("Paste", "push button").click()
        wait_for_value("the node", "from elsewhere\nin two lines", lambda: editor.text)
        self.expect_saved(tab("Prompts", node("from elsewhere\nin two lines", id=known_id(2)),
                              id=known_id(1)))

        editor.click()
        press_keys("ctrl+z")
        wait_for_value("the node", "", lambda: editor.text)
        press_keys("ctrl+z")
        wait_for_value("the node", "mine", lambda: editor.text)
        self.expect_saved(tab("Prompts", node("mine", id=known_id(2)), id=known_id(1)))

    def test_launch_opens_the_address_in_the_browser(self):
        address = "https://quillsatchel.example/a%20b?q=1&r=2#top"
        panel = self.open_panel([tab("Prompts", node(f" {address}\n", id=known_id(2)),
                                     node("no address", id=known_id(3)), id=known_id(1))])

        self.assertFalse(panel.node(2, 2).has_any("Launch"))
        panel.node(1, 2).find("Launch", "push button").click()

        wait_for("an opened address", self.session.opened_addresses)
        self.assertEqual(self.session.opened_addresses(), [address])

    def test_the_trash_deletes_a_node(self):
        kept = node("kept", id=known_id(3))
        panel = self.open_panel([tab("Prompts", node("gone", id=known_id(2)), kept,
                                     id=known_id(1))])

        panel.node(1, 2).find("Delete node", "push button").click()

        wait_for_value("the remaining node", "kept", lambda: panel.editor(1, 1).text)
        self.expect_saved(tab("Prompts", kept, id=known_id(1)))

    def test_a_double_click_on_the_trash_deletes_one_node(self):
        nodes = [node(str(number), id=known_id(number + 1)) for number in range(1, 5)]
        panel = self.open_panel([tab("Prompts", *nodes, id=known_id(1))])

        panel.node(1, 4).find("Delete node", "push button").click(times=2)

        wait_for_value("the remaining node", "2", lambda: panel.editor(1, 3).text)
        panel.find("New Node", "push button").press()  # handled after the second click
        self.expect_saved(tab("Prompts", *nodes[1:], node(), id=known_id(1)))

    def test_unicode_text_survives_the_clipboard(self):
        text = "Grüße, \u0436\u0443\u043a, \u65e5\u672c\u8a9e, \U0001f98a, e\u0301, " \
               "fixed\u00a0space, 1\u20442, \\ / \"\nend\u2028"
        panel = self.open_panel([tab("Prompts", node("old", id=known_id(2)), id=known_id(1))])
        set_clipboard(text)

        panel.editor(1, 1).click()
        press_keys("ctrl+a", "ctrl+v")
        self.expect_saved(tab("Prompts", node(text, id=known_id(2)), id=known_id(1)))

        set_clipboard("something else")
        panel.find("Copy", "push button").click()
        wait_for_value("the clipboard", text, clipboard)
