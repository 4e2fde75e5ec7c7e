"""Starts without a library, with an unreadable one, and with missing system resources."""

import os
import pathlib
import resource
import shutil
import stat
import subprocess
import tempfile
import time
import unittest

from applications import RecordingApplication
from desktop_test import DesktopTest
from library import known_id, node, tab
from processes import end
from tray import StatusItem, Tray
from waiting import wait_for, wait_for_value
from x11 import press_keys, type_text, windows_named

UNPRIVILEGED_USER = 54321  # runs nothing else, so that its thread limit counts only this program
MAX_THREADS = 7  # more than the program needs
# Besides the main thread: Qt's reader of X11 events and its D-Bus connection.
THREADS_AT_REST = ["QDBusConnection", "QXcbEventQueue"]


class StartupTest(DesktopTest):
    def setUp(self):
        self.session.clear_data()

    def test_the_first_change_writes_private_files(self):
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

    def test_the_first_change_keeps_a_copy_of_an_unreadable_library(self):
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

    def test_the_next_start_shows_the_saved_library(self):
        panel = self.open_panel()
        panel.find("New Node").click()
        type_text("kept for later")
        press_keys("Return")
        self.expect_saved(tab("Prompts", node("kept for later\n")))
        panel.end()

        panel = self.open_panel()

        wait_for_value("the nodes", ["kept for later\n"], panel.node_texts)

    def test_a_relative_data_home_is_ignored(self):
        home = self.session.folder / "home"
        default = home / ".local" / "share"
        self.addCleanup(shutil.rmtree, home / ".local", ignore_errors=True)
        here = os.getcwd()
        self.addCleanup(os.chdir, here)
        os.chdir(self.session.folder)
        application = RecordingApplication(self.session, "Found By Default")
        self.addCleanup(application.remove)
        (default / "applications").mkdir(parents=True)
        application.entry.rename(default / "applications" / application.entry.name)
        elsewhere = RecordingApplication(self.session, "Found Elsewhere")
        self.addCleanup(elsewhere.remove)

        panel = self.open_panel(environment={"XDG_DATA_HOME": "data_home"})
        panel.find("New Node").click()
        type_text("kept")

        saved = default / "Quillsatchel" / "prompts.json"
        wait_for("the saved node", lambda: saved.exists() and '"kept"' in saved.read_text())
        self.assertFalse(self.session.data_folder.exists())
        panel.open_settings().find("Launcher 1", "panel").find("Choose App…", "push button").press()
        panel.find("Found By Default", "list item")
        self.assertFalse(panel.has_any("Found Elsewhere", "list item"))

    def test_the_program_survives_the_file_size_limit(self):
        panel = self.open_panel([tab("Prompts", node("before", id=known_id(2)), id=known_id(1))])
        saved = self.library_file.read_bytes()
        unlimited = (resource.RLIM_INFINITY, resource.RLIM_INFINITY)
        resource.prlimit(panel.process_id, resource.RLIMIT_FSIZE, (100, unlimited[1]))
        panel.editor(1, 1).click()
        press_keys("ctrl+Home")
        type_text("typed ")
        time.sleep(1)  # the save delay is 0.25 seconds
        self.assertTrue(panel.is_running())
        self.assertEqual(self.library_file.read_bytes(), saved)

        resource.prlimit(panel.process_id, resource.RLIMIT_FSIZE, unlimited)
        type_text("more ")

        self.expect_saved(tab("Prompts", node("typed more before", id=known_id(2)),
                              id=known_id(1)))

    def test_the_program_starts_without_a_font_configuration(self):
        panel = self.open_panel(environment={"FONTCONFIG_FILE": "/missing/fonts.conf",
                                             "FONTCONFIG_PATH": "/missing"})
        self.expect_default_library(panel)

    def test_only_the_threads_of_its_connections_remain_at_rest(self):
        panel = self.open_panel()
        self.expect_default_library(panel)

        # Qt keeps threads that fill large shapes for 30 seconds.
        wait_for_value("the threads", THREADS_AT_REST, lambda: thread_names(panel.process_id))

    def test_image_plugins_are_not_loaded_without_tray_and_menu_bar(self):
        panel = self.open_panel()
        self.expect_default_library(panel)
        time.sleep(1)  # the desktop is asked shortly after the panel is shown

        self.expect_no_image_plugins(panel)

    def test_image_plugins_are_not_loaded_before_the_menu_of_the_tray_opens(self):
        tray = Tray(self.session)
        self.addCleanup(tray.end)
        panel = self.open_panel()
        item = StatusItem(panel.process_id)
        time.sleep(1)  # the tray asks for the menu when the icon appears

        self.expect_no_image_plugins(panel)
        self.assertIn("Settings…", [entry.label for entry in item.menu.entries()
                                    if entry.has_icon])

    def expect_no_image_plugins(self, panel):
        self.assertIn("platforms/libqxcb", libraries(panel))
        self.assertNotIn("/imageformats/", libraries(panel))

    def expect_default_library(self, panel):
        self.assertEqual(panel.tab_names(), ["Prompts"])
        self.assertTrue(panel.has_any("No nodes yet"))


class RefusalTest(DesktopTest):
    def test_without_a_display_it_exits_with_one_line(self):
        displays = {"DISPLAY": ":4711", "WAYLAND_DISPLAY": "missing"}
        done = subprocess.run([self.program], env=os.environ | displays, timeout=30, text=True,
                              stderr=subprocess.PIPE)
        self.assert_ended_with_a_line(done.returncode, done.stderr)
        self.assertIn("DISPLAY is :4711", done.stderr)

    @unittest.skipIf(os.geteuid(), "Only root can switch to a user without other processes.")
    def test_at_any_thread_limit_it_works_or_exits_with_one_line(self):
        # By default an X server accepts only its own user.
        subprocess.run(["xhost", f"+si:localuser:#{UNPRIVILEGED_USER}"], check=True,
                       stdout=subprocess.DEVNULL)
        worked = [self.works_with_threads(limit) for limit in range(1, MAX_THREADS + 1)]
        self.assertEqual(worked, sorted(worked), "more threads never hurt")
        self.assertEqual(set(worked), {False, True})

    def works_with_threads(self, limit):
        def become_limited_user():
            os.setgid(UNPRIVILEGED_USER)
            os.setuid(UNPRIVILEGED_USER)
            resource.setrlimit(resource.RLIMIT_NPROC, (limit, limit))

        with tempfile.TemporaryDirectory() as home, self.subTest(limit):
            os.chown(home, UNPRIVILEGED_USER, UNPRIVILEGED_USER)
            program = shutil.copy(self.program, home)  # only root may be able to read the original
            homes = {name: home for name in os.environ if name.startswith("XDG_")}
            process = subprocess.Popen([program], env=os.environ | homes | {"HOME": home},
                                       stderr=subprocess.PIPE, text=True,
                                       preexec_fn=become_limited_user)
            self.addCleanup(process.kill)
            with process.stderr:
                wait_for("a panel or an exit",
                         lambda: windows_named("Quillsatchel") or process.poll() is not None)
                try:
                    process.wait(2)  # D-Bus is used shortly after the panel is shown
                except subprocess.TimeoutExpired:
                    self.assertEqual(end(process), 0)
                    return True
                self.assert_ended_with_a_line(process.returncode, process.stderr.read())
        return False

    def assert_ended_with_a_line(self, status, message):
        self.assertEqual(status, 1, message)
        self.assertEqual(len(message.splitlines()), 1, message)
        self.assertTrue(message.startswith("Quillsatchel ends: "), message)


def libraries(panel):
    return pathlib.Path(f"/proc/{panel.process_id}/maps").read_text()


def thread_names(process_id):
    """The names of all threads except the main thread, sorted."""
    return sorted(task.joinpath("comm").read_text().strip()
                  for task in pathlib.Path(f"/proc/{process_id}/task").iterdir()
                  if int(task.name) != process_id)


def mode_of(path):
    return stat.S_IMODE(path.stat().st_mode)
