"""Every operation without a mouse."""

from desktop_test import DesktopTest
from library import known_id, node, tab
from waiting import wait_for, wait_for_value
from x11 import clipboard, press_keys, set_clipboard, type_text


class KeyboardTest(DesktopTest):
    def test_a_tab_is_added_renamed_and_deleted(self):
        first = tab("First", id=known_id(1))
        panel = self.open_panel([first])

        panel.step_to("New tab")
        press_keys("Return")
        wait_for_value("the active tab", ["New Tab"], panel.active_tab_names)
        panel.step_to("New Tab", backwards=True)
        press_keys("F2")
        wait_for("focus in the field", lambda: panel.focused_name() == "Tab name")
        type_text("Second")
        press_keys("Return")
        wait_for("focus on the chip", lambda: panel.focused_name() == "Second")
        self.expect_saved(first, tab("Second"), active=1)

        menu = panel.menu_after(lambda: press_keys("Menu"))
        press_keys("Up", "Return")
        wait_for("the menu to close", menu.is_gone)
        wait_for_value("the row of tabs", ["First"], panel.tab_names)
        self.expect_saved(first)

    def test_a_tab_is_chosen(self):
        first, second = tab("First", id=known_id(1)), tab("Second", id=known_id(2))
        panel = self.open_panel([first, second])

        panel.step_to("Second")
        press_keys("space")

        wait_for_value("the active tab", ["Second"], panel.active_tab_names)
        self.expect_saved(first, second, active=1)

    def test_a_node_is_added_and_written(self):
        panel = self.open_panel([tab("Prompts", id=known_id(1))])

        panel.step_to("New Node")
        press_keys("Return")
        wait_for("focus in the editor", lambda: panel.focused_name() == "Node text")
        type_text("a\tb")  # Tab inserts a tab character here
        press_keys("Return")
        type_text("c")

        self.expect_saved(tab("Prompts", node("a\tb\nc"), id=known_id(1)))

    def test_a_node_is_colored_moved_copied_and_deleted(self):
        one, two = node("one", id=known_id(2)), node("two", id=known_id(3))
        panel = self.open_panel([tab("Prompts", one, two, id=known_id(1))])
        set_clipboard("something else")

        panel.step_to("Node color")
        menu = panel.menu_after(lambda: press_keys("Return"))
        press_keys("Down", "Down", "Return")
        wait_for("the menu to close", menu.is_gone)
        one["color"] = "orange"
        self.expect_saved(tab("Prompts", one, two, id=known_id(1)))

        panel.step_to("Drag node to reorder", backwards=True)
        press_keys("Down")
        self.expect_saved(tab("Prompts", two, one, id=known_id(1)))
        press_keys("Up")
        self.expect_saved(tab("Prompts", one, two, id=known_id(1)))

        panel.step_to("Copy")
        press_keys("Return")
        wait_for_value("the clipboard", "one", clipboard)

        panel.step_to("Delete node", backwards=True)
        press_keys("Return")
        self.expect_saved(tab("Prompts", two, id=known_id(1)))

    def test_ctrl_tab_leaves_an_editor_both_ways(self):
        panel = self.open_panel([tab("Prompts", node("one", id=known_id(2)), id=known_id(1))])

        panel.step_to("Node text")
        press_keys("ctrl+Tab")
        wait_for("the next control", lambda: panel.focused_name() == "Dictate")
        panel.step_to("Node text", backwards=True)
        press_keys("ctrl+shift+Tab")
        wait_for("the control before", lambda: panel.focused_name() == "Delete node")

        self.assertEqual(panel.node_texts(), ["one"])

    def test_space_toggles_always_on_top(self):
        panel = self.open_panel([tab("Prompts", id=known_id(1))])

        switch = panel.step_to("Always on Top", backwards=True)
        for is_above in (False, True):
            press_keys("space")
            wait_for_value("the above state", is_above, lambda: "ABOVE" in panel.window.states())
            self.assertEqual(switch.has("checked"), is_above)

    def test_the_about_card_traps_the_focus_until_it_closes(self):
        panel = self.open_panel([tab("Prompts", id=known_id(1))])

        panel.step_to("About Quillsatchel", backwards=True)
        press_keys("Return")
        card = panel.find("About Quillsatchel", "dialog")
        wait_for("focus on the card", lambda: panel.focused_name() == "Close")
        names = self.names_in_tab_order(panel)
        self.assertIn("Close", names)
        self.assertEqual(len(names), 3)
        self.assertFalse({"New tab", "New Node", "Minimize"} & set(names))

        press_keys("Escape")
        wait_for("the card to close", card.is_gone)
        wait_for("focus on the icon", lambda: panel.focused_name() == "About Quillsatchel")

    def test_shortcuts_work_while_a_menu_is_open(self):
        panel = self.open_panel([tab("Prompts", node("a", id=known_id(2)), id=known_id(1))])

        for key in ("F10", "Menu"):  # the panel's menu, the text's context menu
            with self.subTest(key):
                panel.editor(1, 1).click()
                menu = panel.menu_after(lambda: press_keys(key))
                card = panel.open_settings()
                wait_for("the menu to close", menu.is_gone)
                press_keys("Escape")
                wait_for("the card to close", card.is_gone)

    def names_in_tab_order(self, panel):
        start = (panel.focused_name(), panel.focused().frame)
        names = []
        while not names or (panel.focused_name(), panel.focused().frame) != start:
            panel.step()
            names.append(panel.focused_name())
        return names
