"""The desktop's own search, asked over D-Bus as GNOME Shell and KRunner do."""

import configparser
import pathlib

from gi.repository import Gio, GLib

from accessibility import EventObserver
from bus import call, has_owner, owner_process
from desktop_test import DesktopTest
from library import known_id, node, tab
from waiting import wait_for, wait_for_value
from x11 import (Rect, active_window, clipboard, open_colored_window, run, set_clipboard, type_text,
                 windows_named)

PACKAGING = pathlib.Path(__file__).resolve().parents[2] / "packaging"
ID = "example.quillsatchel.Quillsatchel"
SHELL = "org.gnome.Shell.SearchProvider2"
RUNNER = "org.kde.krunner1"
DO_NOT_QUEUE = 4

MAILS = tab("Mails", node("Reply shortly.", id=known_id(10)), node("Thanks.", id=known_id(11)),
            id=known_id(1))
CODE = tab("Code", node("Review this change.\nAnswer in English.", id=known_id(20)),
           id=known_id(2))
LIBRARY = (MAILS, CODE)
REVIEW = "Review this change.\nAnswer in English."


def read_keys(file, group):
    parser = configparser.ConfigParser(interpolation=None)
    parser.read(PACKAGING / f"{ID}.{file}")
    return parser[group]


class Shell:
    """Asks as GNOME Shell does, at the address in its installed file."""

    def __init__(self):
        provider = read_keys("search-provider.ini", "Shell Search Provider")
        self.name, self._path = provider["BusName"], provider["ObjectPath"]

    def call(self, method, signature, *arguments):
        answer = call(self.name, self._path, SHELL, method, GLib.Variant(signature, arguments))
        return answer[0] if answer else None

    def find(self, *terms):
        """The metas of the results."""
        ids = self.call("GetInitialResultSet", "(as)", terms)
        return self.call("GetResultMetas", "(as)", ids)

    def activate(self, result):
        self.call("ActivateResult", "(sasu)", result, ["term"], 0)


class Runner:
    """Asks as KRunner does, at the address in its installed file."""

    def __init__(self):
        runner = read_keys("runner.desktop", "Desktop Entry")
        self.name = runner["X-Plasma-DBusRunner-Service"].removesuffix("*")
        self._path = runner["X-Plasma-DBusRunner-Path"]

    def call(self, method, signature="()", *arguments):
        answer = call(self.name, self._path, RUNNER, method, GLib.Variant(signature, arguments))
        return answer[0] if answer else None

    def find(self, query):
        return self.call("Match", "(s)", query)

    def run(self, result, action=""):
        self.call("Run", "(ss)", result, action)


class DesktopSearchTest(DesktopTest):
    def setUp(self):
        self.open_panel(list(LIBRARY))
        self.shell, self.runner = Shell(), Runner()
        wait_for("the program's name on the bus", lambda: has_owner(ID))
        set_clipboard("something else")

    def id_of(self, query):
        return self.runner.find(query)[0][0]


class QuietSearchTest(DesktopSearchTest):
    """Searches and copies while the user works in another program."""

    def setUp(self):
        super().setUp()
        self.other = open_colored_window(self.session, "other", "#1E8C4B", Rect(20, 20, 300, 300),
                                         self.addCleanup)
        self.files = self.file_stamps()
        self.windows = self.stacking()

    def file_stamps(self):
        """Identity and time of each file that the program may write."""
        folders = (self.session.data_folder, self.session.folder / "state_home")
        return {file: (file.stat().st_ino, file.stat().st_mtime_ns)
                for folder in folders for file in folder.rglob("*")}

    @staticmethod
    def stacking():
        return run("xprop", "-root", "_NET_CLIENT_LIST_STACKING")

    def expect_only_copied(self, text):
        wait_for_value("the clipboard", text, clipboard)
        self.assertEqual(active_window(), self.other)
        self.assertEqual(self.stacking(), self.windows)
        self.assertEqual(self.panel.active_tab_names(), ["Mails"])
        self.assertFalse(self.panel.has_any("Find", "dialog"))
        self.expect_saved(*LIBRARY)
        self.assertEqual(self.file_stamps(), self.files)

    def test_gnome_shell_copies_a_node_of_another_tab(self):
        first = self.shell.call("GetInitialResultSet", "(as)", ["rev"])
        ids = self.shell.call("GetSubsearchResultSet", "(asas)", first, ["review", "CODE"])
        meta, = self.shell.call("GetResultMetas", "(as)", ids)
        self.assertEqual(meta, {"id": ids[0], "name": "Review this change.", "description": "Code",
                                "clipboardText": REVIEW})

        self.shell.activate(ids[0])

        self.expect_only_copied(REVIEW)

    def test_krunner_copies_a_node_of_another_tab(self):
        result, name, icon, kind, relevance, properties = self.runner.find("review code")[0]
        self.assertEqual((name, icon, properties), ("Review this change.", ID, {"subtext": "Code"}))
        self.assertTrue(0 < kind <= 100 and 0 < relevance <= 1, (kind, relevance))

        self.runner.run(result)
        self.runner.call("Teardown")

        self.expect_only_copied(REVIEW)

    def test_krunner_lists_the_best_first(self):
        texts = [node(f"{word} here", id=known_id(40 + number))
                 for number, word in enumerate(("chapters", "unchapter", "chapter"))]
        self.panel.end()
        self.open_panel([tab("Texts", *texts, id=known_id(4))])
        wait_for("the program's name on the bus", lambda: has_owner(ID))
        matches = sorted(self.runner.find("chapter"), key=lambda match: -match[4])
        self.assertEqual([match[1] for match in matches],
                         ["chapter here", "chapters here", "unchapter here"])

    def test_a_copied_node_of_the_active_tab_is_marked(self):
        names = EventObserver("object:property-change:accessible-name")
        self.shell.activate(self.id_of("thanks"))
        names.wait_for("Copied", "push button")
        self.expect_only_copied("Thanks.")

    def test_krunner_gives_the_text_to_plasmas_clipboard(self):
        file = self.session.folder / "klipper"
        klipper = self.session.start(str(pathlib.Path(__file__).with_name("klipper.py")), str(file))
        self.addCleanup(klipper.kill)
        wait_for("Klipper", lambda: has_owner("org.kde.klipper"))

        self.runner.run(self.id_of("review"))

        wait_for("a text", lambda: file.exists() and file.read_text())
        self.assertEqual(file.read_text(), REVIEW)
        self.expect_only_copied(REVIEW)

    def test_a_minimized_panel_stays_minimized(self):
        self.panel.find("Minimize", "push button").press()
        wait_for("the panel to be minimized", self.panel.window.is_iconic)
        self.shell.activate(self.id_of("review"))
        wait_for_value("the clipboard", REVIEW, clipboard)
        self.assertTrue(self.panel.window.is_iconic())

    def test_few_letters_find_nothing(self):
        for terms in ([], [""], ["re"], ["r", "e"]):
            self.assertEqual(self.shell.call("GetInitialResultSet", "(as)", terms), [])
        for query in ("", " ", "re", "r e"):
            self.assertEqual(self.runner.find(query), [])

    def test_bad_requests_change_nothing(self):
        huge = "x" * 2_000_000
        unknown = ["", "/", huge, self.id_of("review")[:-1], known_id(20)]
        self.assertEqual(self.shell.call("GetResultMetas", "(as)", unknown), [])
        self.assertEqual(self.shell.call("GetInitialResultSet", "(as)", [huge] * 3), [])
        self.assertEqual(self.runner.find(huge), [])
        for result in unknown:
            self.shell.activate(result)
            self.runner.run(result)
            self.runner.run(result, "show")
        self.runner.run(self.id_of("review"), "unknown action")
        for asker, method, signature, arguments in (
                (self.shell, "GetInitialResultSet", "(s)", ["review"]),
                (self.shell, "GetResultMetas", "(ai)", [[1]]),
                (self.shell, "ActivateResult", "(s)", [self.id_of("review")]),
                (self.runner, "Match", "(as)", [["review"]]),
                (self.runner, "Run", "(s)", [self.id_of("review")]),
                (self.runner, "Unknown", "()", [])):
            with self.assertRaisesRegex(GLib.Error, "UnknownMethod"):
                asker.call(method, signature, *arguments)
        self.expect_only_copied("something else")

    def test_metas_are_given_for_ten_results_at_most(self):
        metas = self.shell.call("GetResultMetas", "(as)", [self.id_of("review")] * 1000)
        self.assertEqual(len(metas), 10)


class OpeningSearchTest(DesktopSearchTest):
    """What opens the panel."""

    def setUp(self):
        super().setUp()
        open_colored_window(self.session, "other", "#1E8C4B", Rect(20, 20, 300, 300),
                            self.addCleanup)

    def await_panel_in_front(self):
        wait_for_value("the active window", self.panel.window, active_window)

    def test_gnome_shell_opens_the_find_card(self):
        self.shell.call("LaunchSearch", "(asu)", ["review", "code"], 0)
        self.await_panel_in_front()
        wait_for("focus in the field", lambda: self.panel.focused_name() == "Find in all tabs")
        self.assertEqual(self.panel.focused().text, "review code")
        self.panel.find("1 node", "alert")

    def test_krunner_shows_a_node(self):
        (action, title, _), = self.runner.call("Actions")
        self.assertEqual(title, "Show")
        self.runner.run(self.id_of("review"), action)
        self.await_panel_in_front()
        wait_for("focus in the text", lambda: self.panel.focused_name() == "Node text")
        self.assertEqual(self.panel.active_tab_names(), ["Code"])
        type_text("x")
        changed = tab("Code", node("x" + REVIEW, id=known_id(20)), id=known_id(2))
        self.expect_saved(MAILS, changed, active=1)
        self.assertEqual(clipboard(), "something else")

    def test_a_deleted_node_is_no_longer_found(self):
        result = self.id_of("thanks")
        self.panel.node(2, 2).find("Delete node", "push button").press()
        wait_for_value("the results", [], lambda: self.runner.find("thanks"))
        self.assertEqual(self.shell.call("GetResultMetas", "(as)", [result]), [])
        for action in ("", "show"):
            self.runner.run(result, action)
        self.expect_saved(tab("Mails", MAILS["blocks"][0], id=known_id(1)), CODE)
        self.assertEqual(clipboard(), "something else")

    def test_a_text_that_is_too_long_for_the_bus_is_copied_by_the_program(self):
        text = "long " + "x" * 1024 * 1024
        self.panel.end()
        self.open_panel([tab("Texts", node(text, id=known_id(40)), id=known_id(4))])
        wait_for("the program's name on the bus", lambda: has_owner(ID))
        meta, = self.shell.find("long")
        self.assertNotIn("clipboardText", meta)
        self.shell.activate(meta["id"])
        wait_for("the clipboard", lambda: clipboard() == text)


class BusNameTest(DesktopTest):
    """The program's name on the bus."""

    def test_the_name_goes_with_the_program(self):
        self.open_panel(list(LIBRARY))
        wait_for("the program's name on the bus", lambda: has_owner(ID))
        self.assertEqual(owner_process(ID), self.panel.process_id)
        self.assertEqual(self.panel.end(), 0)
        wait_for("the name to be free", lambda: not has_owner(ID))

    def test_a_name_of_another_program_is_left_to_it(self):
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)

        def ask(method, signature, *arguments):
            return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                        method, GLib.Variant(signature, arguments))[0]

        ask("RequestName", "(su)", ID, DO_NOT_QUEUE)
        self.addCleanup(lambda: has_owner(ID) and ask("ReleaseName", "(s)", ID))
        self.open_panel(list(LIBRARY))
        set_clipboard("something else")
        self.panel.find("Copy", "push button").press()
        wait_for_value("the clipboard", "Reply shortly.", clipboard)
        self.assertEqual(ask("GetNameOwner", "(s)", ID), bus.get_unique_name())
        self.assertEqual(ask("ListQueuedOwners", "(s)", ID), [bus.get_unique_name()])

    def test_the_program_runs_without_a_bus(self):
        self.session.clear_data()
        program = self.session.start(self.program, environment={
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.session.folder}/no-bus"})
        self.addCleanup(program.kill)
        wait_for("a panel", lambda: windows_named("Quillsatchel"))
        type_text("a")  # opens the find card, after the first frame
        self.assertIsNone(program.poll())
        self.assertFalse(has_owner(ID))
        program.terminate()
        self.assertEqual(program.wait(10), 0)
