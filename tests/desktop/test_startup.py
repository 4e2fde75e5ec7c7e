"""Starting with no library, and with one that cannot be read."""

import stat

from desktop_test import DesktopTest
from library import node, tab
from waiting import wait_for_value
from x11 import press_keys, type_text


class StartupTest(DesktopTest):
    def setUp(self):
        self.session.clear_data()

    def test_nothing_is_written_before_the_first_change_and_then_for_the_owner_alone(self):
        panel = self.open_panel()
        self.expect_default_library(panel)
        self.assertEqual({file.name for file in self.session.data_folder.iterdir()},
                         {"Favicons", ".instance"})

        panel.find("New Node").click()

        self.expect_saved(tab("Prompts", node()))
        self.assertEqual(mode_of(self.session.data_folder), 0o700)
        self.assertEqual(mode_of(self.session.data_folder / "Favicons"), 0o700)
        self.assertEqual(mode_of(self.library_file), 0o600)
        self.assertEqual(mode_of(self.session.data_folder / ".instance"), 0o600)

    def test_an_unreadable_library_is_set_aside_at_the_first_change(self):
        unreadable = b'{"tabs" : [{"name" : "half a libr'
        self.session.data_folder.mkdir()
        self.library_file.write_bytes(unreadable)
        aside = self.session.data_folder / "prompts.json.unreadable"

        panel = self.open_panel()
        self.expect_default_library(panel)
        self.assertEqual(self.library_file.read_bytes(), unreadable)
        self.assertFalse(aside.exists())

        panel.find("New Node").click()
        type_text("new")

        self.expect_saved(tab("Prompts", node("new")), beside=[aside.name])
        self.assertEqual(aside.read_bytes(), unreadable)

    def test_a_second_start_shows_what_the_first_one_saved(self):
        panel = self.open_panel()
        panel.find("New Node").click()
        type_text("kept for later")
        press_keys("Return")
        self.expect_saved(tab("Prompts", node("kept for later\n")))
        panel.end()

        panel = self.open_panel()

        wait_for_value("the nodes", ["kept for later\n"], panel.node_texts)

    def expect_default_library(self, panel):
        self.assertEqual(panel.tab_names(), ["Prompts"])
        self.assertTrue(panel.has_any("No nodes yet"))


def mode_of(path):
    return stat.S_IMODE(path.stat().st_mode)
