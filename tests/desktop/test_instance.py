"""Second starts, and the ways in which the program ends."""

import contextlib
import fcntl
import itertools
import os
import re
import shutil
import signal
import time

from desktop_test import DesktopTest
from library import known_id, node, tab
from processes import end
from waiting import wait_for, wait_for_value
from x11 import (Rect, active_window, open_colored_window, press_keys, run, show_desktop,
                 type_text, windows_named)

ALL_DESKTOPS = 0xFFFFFFFF
NO_ANSWER_STATUS = 1
PAIRS = 100


class InstanceTest(DesktopTest):
    titles = itertools.count()

    def setUp(self):
        self.panel = self.open_panel([tab("Prompts", node("kept", id=known_id(2)),
                                          id=known_id(1))])
        self.window = self.panel.window

    def start_again(self, environment=None):
        """Returns the exit status of the second start."""
        second = self.session.start(self.program, environment=environment)
        self.addCleanup(second.kill)
        return second.wait(10)

    def await_panel_in_front(self):
        wait_for("the panel to be visible", self.window.is_visible)
        wait_for_value("the active window", self.window, active_window)
        self.assertEqual(windows_named("Quillsatchel"), [self.window])

    def hide(self):
        self.panel.find("Close", "push button").press()
        wait_for("the panel to be hidden", lambda: not self.window.is_visible())

    def minimize(self):
        self.panel.find("Minimize", "push button").press()
        wait_for("the panel to be minimized", self.window.is_iconic)

    def open_other_program(self):
        """Another program in which the user is typing."""
        title = f"other {next(self.titles)}"
        other = open_colored_window(self.session, title, "#1E8C4B", Rect(20, 20, 300, 300),
                                    self.addCleanup)
        type_text("busy")
        return other


class SecondStartTest(InstanceTest):
    def test_it_brings_back_a_hidden_panel(self):
        self.hide()
        self.open_other_program()
        self.assertEqual(self.start_again(), 0)
        self.await_panel_in_front()

    def test_it_brings_back_a_minimized_panel_on_another_desktop(self):
        self.minimize()
        self.addCleanup(show_desktop, 0)
        show_desktop(1)
        self.assertEqual(self.start_again(), 0)
        self.await_panel_in_front()
        wait_for_value("the panel's desktop", ALL_DESKTOPS, self.window.desktop)

    def test_it_gives_a_visible_panel_the_keyboard(self):
        self.open_other_program()
        self.assertEqual(self.start_again(), 0)
        self.await_panel_in_front()

    def test_it_activates_the_panel_with_the_time_of_the_click(self):
        for prepare in (self.hide, self.minimize, lambda: None):
            prepare()
            self.open_other_program()
            click = {"DESKTOP_STARTUP_ID": f"launcher-1_TIME{self.display_time()}"}
            self.assertEqual(self.start_again(click), 0)
            self.await_panel_in_front()

    def test_it_completes_the_startup_notification(self):
        with self.root_events() as read_events:
            self.assertEqual(self.start_again({"DESKTOP_STARTUP_ID": "launcher-1_TIME1"}), 0)
            wait_for("the end of the startup notification",
                     lambda: "_NET_STARTUP_INFO_BEGIN" in read_events())

    def test_it_does_not_touch_the_library(self):
        before = self.library_file.stat()
        names = sorted(os.listdir(self.session.data_folder))
        self.assertEqual(self.start_again(), 0)
        self.assertEqual(self.library_file.stat(), before)
        self.assertEqual(sorted(os.listdir(self.session.data_folder)), names)

    def test_it_needs_no_display(self):
        self.hide()
        self.assertEqual(self.start_again({"DISPLAY": "", "QT_QPA_PLATFORM": "none"}), 0)
        self.await_panel_in_front()

    def test_it_gives_up_if_the_first_instance_is_stopped(self):
        process = self.panel.process
        process.send_signal(signal.SIGSTOP)
        self.addCleanup(process.send_signal, signal.SIGCONT)
        self.assertEqual(self.start_again(), NO_ANSWER_STATUS)
        self.assertIn("does not answer", self.session.log())

    def test_it_finds_the_first_instance_without_its_lock_file(self):
        self.hide()
        (self.session.data_folder / ".instance").unlink()
        self.assertEqual(self.start_again(), 0)
        self.await_panel_in_front()
        self.expect_typing_saved()

    def test_it_finds_the_first_instance_in_a_replaced_folder(self):
        self.hide()
        aside = self.session.folder / "aside"
        self.addCleanup(shutil.rmtree, aside)
        self.session.data_folder.rename(aside)
        shutil.copytree(aside, self.session.data_folder)
        self.assertEqual(self.start_again(), 0)
        self.await_panel_in_front()
        self.expect_typing_saved()

    def test_nothing_is_written_while_another_process_holds_the_lock(self):
        lock_file = self.session.data_folder / ".instance"
        lock_file.unlink()
        saved = self.library_file.read_bytes()
        with open(lock_file, "w") as another:
            fcntl.flock(another, fcntl.LOCK_EX)
            self.type_into_node("kept in memory ")
            time.sleep(1)  # four times the save delay
            self.assertEqual(self.library_file.read_bytes(), saved)
            self.library_file.write_bytes(b"of another process")
        self.type_into_node("x")
        self.expect_saved(tab("Prompts", node("xkept in memory kept", id=known_id(2)),
                              id=known_id(1)), beside=["prompts.json.unreadable"])
        aside = self.session.data_folder / "prompts.json.unreadable"
        self.assertEqual(aside.read_bytes(), b"of another process")

    def type_into_node(self, text):
        self.panel.editor(1, 1).click()
        press_keys("ctrl+Home")
        type_text(text)

    def expect_typing_saved(self):
        self.type_into_node("still ")
        self.expect_saved(tab("Prompts", node("still kept", id=known_id(2)), id=known_id(1)))

    def test_each_data_folder_has_its_own_instance(self):
        elsewhere = self.session.folder / "elsewhere"
        elsewhere.mkdir(exist_ok=True)
        other = self.session.start(self.program, environment={"XDG_DATA_HOME": str(elsewhere)})
        self.addCleanup(other.wait)
        self.addCleanup(other.terminate)
        wait_for("two panels", lambda: len(windows_named("Quillsatchel")) == 2)

    def display_time(self):
        """The X server's time, which is later than the user's last input."""
        with self.root_events() as read_events:
            return re.findall(r" time (\d+),", read_events())[-1]

    @contextlib.contextmanager
    def root_events(self):
        """Logs property events of the root window; yields a function that reads the log."""
        file = self.session.folder / "root-events"
        with open(file, "w") as log:
            logger = self.session.start("xev", "-root", "-event", "property", stdout=log)

        def is_logging():
            run("xprop", "-root", "-f", "_PROBE", "8s", "-set", "_PROBE", "x")
            return "_PROBE" in file.read_text()

        try:
            wait_for("the event log", is_logging)
            yield file.read_text
        finally:
            end(logger)


class SimultaneousStartsTest(DesktopTest):
    def test_one_of_two_simultaneous_starts_survives(self):
        library = [tab("Prompts", node("kept", id=known_id(2)), id=known_id(1))]
        first = self.open_panel(library)
        first.end()
        saved = self.library_file.read_bytes()
        for pair in range(PAIRS):
            starts = [self.session.start(self.program) for _ in range(2)]
            for start in starts:
                self.addCleanup(start.kill)
            wait_for("one instance to exit",
                     lambda: any(start.poll() is not None for start in starts))
            ended, = (start for start in starts if start.poll() is not None)
            stayed, = (start for start in starts if start.poll() is None)
            self.assertEqual(ended.returncode, 0)
            wait_for("one panel", lambda: len(windows_named("Quillsatchel")) == 1)
            stayed.terminate() if pair % 2 else stayed.kill()
            self.assertEqual(stayed.wait(), 0 if pair % 2 else -signal.SIGKILL)
            self.assertEqual(self.library_file.read_bytes(), saved)
        self.assertEqual(set(os.listdir(self.session.data_folder)),
                         {"prompts.json", "Favicons", ".instance"})


class EndTest(InstanceTest):
    def test_it_exits_cleanly_on_sigterm_and_sigint(self):
        for ending in (signal.SIGTERM, signal.SIGINT):
            with self.subTest(ending):
                saved = self.library_file.read_bytes()
                self.panel.process.send_signal(ending)
                self.assertEqual(self.panel.wait_for_end(), 0)
                self.assertEqual(self.library_file.read_bytes(), saved)
                self.setUp()

    def test_losing_the_display_keeps_the_library_intact(self):
        saved = self.library_file.read_bytes()
        run("xkill", "-id", self.window.number)
        self.assertNotEqual(self.panel.process.wait(10), 0)
        self.assertEqual(self.library_file.read_bytes(), saved)

    def test_it_starts_after_a_kill_and_removes_temporary_files(self):
        self.panel.process.kill()
        self.panel.process.wait()
        leftover = self.session.data_folder / "prompts.json.saving-AbCdEf"
        leftover.write_text("half a libr")
        mine = self.session.data_folder / "prompts.json.backup"
        mine.write_text("mine")

        panel = self.open_panel()

        self.assertEqual(panel.node_texts(), ["kept"])
        self.assertFalse(leftover.exists())
        self.assertEqual(mine.read_text(), "mine")

    def test_it_survives_the_end_of_its_terminal(self):
        self.panel.process.send_signal(signal.SIGHUP)
        self.panel.process.send_signal(signal.SIGPIPE)
        self.place_cursor_at_start()
        type_text("still here ")
        self.expect_saved(tab("Prompts", node("still here kept", id=known_id(2)),
                              id=known_id(1)))

    def test_child_programs_have_default_signals(self):
        opener = self.session.folder / "bin" / "xdg-open"
        recording = opener.read_text()
        self.addCleanup(opener.write_text, recording)
        record = self.session.folder / "signals"
        opener.write_text(f"#!/bin/sh\ngrep -E '^Sig(Blk|Ign)' /proc/self/status >{record}.part\n"
                          f"mv {record}.part {record}\n")
        self.panel.end()
        panel = self.open_panel([tab("Prompts", node("https://127.0.0.1/", id=known_id(2)),
                                     id=known_id(1))])
        panel.find("Launch", "push button").press()
        wait_for("the program started", record.exists)
        for line in record.read_text().splitlines():
            self.assertEqual(int(line.split()[1], 16) & 0x1FFFFFFF, 0, line)

    def place_cursor_at_start(self):
        self.panel.editor(1, 1).click()
        press_keys("ctrl+Home")
