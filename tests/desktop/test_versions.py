"""Earlier versions of the library: kept on saves, restored as the README says."""

import os
import pathlib
import re
import stat
import subprocess

import library
from desktop_test import DesktopTest
from library import known_id, node, tab
from waiting import wait_for, wait_for_value

README = pathlib.Path(__file__).resolve().parents[2] / "README.md"
EXAMPLE = "prompts 2026-11-21 23.17.05.json"
NAME = re.compile(r"prompts \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d( by another program)?\.json")
A_YEAR = 365 * 24 * 3600

FIRST, SECOND = node("first", id=known_id(2)), node("second", id=known_id(3))
BEFORE = tab("Prompts", FIRST, SECOND, id=known_id(1))
FOREIGN = library.encode([tab("Of another program", node("foreign", id=known_id(5)),
                              id=known_id(4))])


def restore_commands():
    """The commands in the README."""
    section = README.read_text().partition("## Restore an earlier version")[2]
    return re.search(r"```sh\n(.*?)```", section, re.DOTALL)[1]


class VersionsTest(DesktopTest):
    def setUp(self):
        self.panel = self.open_panel([BEFORE])

    def versions(self):
        """Maps the names of the kept files to their bytes."""
        folder = self.session.versions_folder
        return {file.name: file.read_bytes() for file in folder.glob("*")}

    def delete_second_node(self):
        self.panel.node(2, 2).find("Delete node", "push button").press()
        self.expect_saved(tab("Prompts", FIRST, id=known_id(1)))


class RestoringTest(VersionsTest):
    def test_a_deleted_node_is_restored_as_the_readme_says(self):
        before = self.library_file.read_bytes()
        self.delete_second_node()
        self.panel.end()

        (name, kept), = self.versions().items()
        self.assertRegex(name, NAME)
        self.assertEqual(kept, before)
        self.assertIn(EXAMPLE, restore_commands())
        subprocess.run(["sh", "-e", "-c", restore_commands().replace(EXAMPLE, name)], check=True,
                       stdout=subprocess.DEVNULL)
        self.assertEqual(self.library_file.read_bytes(), before)

        panel = self.open_panel()
        wait_for_value("the nodes", ["first", "second"], panel.node_texts)
        self.assertEqual(self.library_file.read_bytes(), before)

    def test_versions_are_private(self):
        self.delete_second_node()
        folder = self.session.versions_folder
        self.assertEqual(stat.S_IMODE(folder.stat().st_mode), 0o700)
        for file in folder.iterdir():
            self.assertEqual(stat.S_IMODE(file.stat().st_mode), 0o600)

    def test_no_folder_exists_before_the_first_change(self):
        self.assertFalse(self.session.versions_folder.exists())


class ForeignChangesTest(VersionsTest):
    """Another program changes the file while the panel runs, and then the user clicks."""

    def setUp(self):
        super().setUp()
        self.panel.find("New tab", "push button").click()
        self.expect_saved(BEFORE, tab("New Tab"), active=1)

    def expect_kept_after_a_click(self, foreign):
        self.panel.tab("Prompts").click()
        wait_for("a save", lambda: self.library_file.read_bytes() != foreign)
        names = [name for name, kept in self.versions().items() if kept == foreign]
        self.assertEqual(len(names), 1, self.versions())
        self.assertRegex(names[0], NAME)
        self.assertIn("by another program", names[0])

    def test_a_file_renamed_over_it_is_kept(self):
        new = self.session.folder / "new.json"
        new.write_bytes(FOREIGN)
        new.rename(self.library_file)
        self.expect_kept_after_a_click(FOREIGN)

    def test_a_file_written_in_place_is_kept(self):
        self.library_file.write_bytes(FOREIGN)
        self.expect_kept_after_a_click(FOREIGN)

    def test_an_edit_that_keeps_the_size_is_kept(self):
        foreign = self.library_file.read_bytes().replace(b"first", b"FIRST")
        with open(self.library_file, "r+b") as file:
            file.write(foreign)
        self.expect_kept_after_a_click(foreign)

    def test_a_synchronised_file_with_an_old_time_is_kept(self):
        partial = self.session.data_folder / ".prompts.json.part"
        partial.write_bytes(FOREIGN)
        old = self.library_file.stat().st_mtime - A_YEAR
        os.utime(partial, (old, old))
        partial.rename(self.library_file)
        self.expect_kept_after_a_click(FOREIGN)
