"""The icon and its menu in a real tray, and the menus in a global menu bar."""

from pathlib import Path

import launchers
from applications import RecordingApplication
from bus import has_owner
from bus_menu import SEPARATOR, Entry, Menu
from desktop_test import DesktopTest
from launchers import application, website
from library import known_id, node, tab
from processes import end
from tray import EmbeddingTray, StatusItem, Tray, has_tray_over_bus, is_in_tray
from waiting import wait_for, wait_for_value
from x11 import active_window, click, press_keys

CUP_COLOR = (0xE8, 0x29, 0x2B)
ABOVE = "ABOVE"

SHOW = Entry("Show Quillsatchel")
ON_TOP = Entry("Always on Top", mark=1)
NOT_ON_TOP = ON_TOP._replace(mark=0)
SETTINGS = Entry("Settings…", keys=("Control", ","), has_icon=True)
QUIT = Entry("Quit Quillsatchel", keys=("Control", "Q"))
MENU_WITHOUT_LAUNCHERS = [SHOW, ON_TOP, SETTINGS, SEPARATOR, QUIT]


class StatusItemTest(DesktopTest):
    def setUp(self):
        self.application = RecordingApplication(self.session, "Zither & Lute & Co",
                                                arguments="--tuned")
        self.addCleanup(self.application.remove)

    def start_tray(self):
        tray = Tray(self.session)
        self.addCleanup(lambda: has_tray_over_bus() and tray.end())
        return tray

    def start(self, slots=(None,) * 5):
        self.session.clear_data()
        self.session.data_folder.mkdir(mode=0o700)
        (self.session.data_folder / "launchers.json").write_text(launchers.encode(list(slots)))
        panel = self.open_panel()
        self.item = StatusItem(panel.process_id)
        return panel

    def filled_slots(self):
        return [application(self.application, known_id(1)), None,
                website("example.com", "https://example.com", known_id(2)), None,
                website("a_b", "https://a_b.example", known_id(3))]

    def await_hidden(self, panel):
        wait_for("the panel to be hidden", lambda: not panel.window.is_visible())
        self.assertFalse(panel.window.is_iconic())

    def test_it_appears_with_its_menu(self):
        self.start_tray()
        self.start()

        self.item.menu.await_entries(MENU_WITHOUT_LAUNCHERS)
        self.assertEqual(self.item.get_property("Id"), "Quillsatchel")
        self.assertEqual(self.item.get_property("Status"), "Active")
        sizes = {width for width, _, _ in self.item.get_property("IconPixmap")}
        self.assertLessEqual({16, 22, 24, 32, 48}, sizes)

    def test_its_menu_lists_the_launchers(self):
        self.start_tray()
        self.start(self.filled_slots())

        self.item.menu.await_entries(
            [SHOW, ON_TOP, SETTINGS, SEPARATOR,
             Entry("_Zither & Lute & Co", has_icon=True), Entry("example.com", has_icon=True),
             Entry("a__b", has_icon=True), SEPARATOR, QUIT])

    def test_the_tray_follows_changes_of_the_launchers(self):
        tray = self.start_tray()
        panel = self.start([website("example.com", "https://example.com", known_id(2)), None, None,
                            None, application(self.application, known_id(1))])
        tray.open_menu(CUP_COLOR)
        press_keys("Escape")
        card = panel.open_settings()
        card.find("Launcher 1", "panel").find("Clear launcher", "push button").press()
        wait_for_value("the number of entries", 7, lambda: len(self.item.menu.entries()))

        tray.choose(4, CUP_COLOR)  # the website's former position

        wait_for("the application to start", self.application.recorded_start)

    def test_its_entries_do_what_they_say(self):
        self.start_tray()
        panel = self.start(self.filled_slots())
        self.use_entries(panel)

    def test_its_entries_work_after_the_tray_restarts(self):
        tray = self.start_tray()
        panel = self.start(self.filled_slots())
        tray.end()
        self.start_tray()
        self.item = StatusItem(panel.process_id)
        self.use_entries(panel)

    def use_entries(self, panel):
        panel.find("Close", "push button").press()
        self.await_hidden(panel)
        self.item.menu.choose("Show Quillsatchel")
        wait_for("the panel", panel.window.is_visible)
        wait_for_value("the active window", panel.window, active_window)

        for is_above in (False, True):
            self.item.menu.choose("Always on Top")
            wait_for_value("the above state", is_above, lambda: ABOVE in panel.window.states())
            wait_for_value("the mark", ON_TOP if is_above else NOT_ON_TOP,
                           lambda: self.item.menu.entries()[1])

        panel.find("Close", "push button").press()
        self.await_hidden(panel)
        self.item.menu.choose("Settings…")
        panel.find("Quick Launchers", "dialog")

        self.item.menu.choose("_Zither & Lute & Co")
        first, *words = wait_for("the application to start", self.application.recorded_start)
        self.assertEqual(words[:-1], ["--tuned"])

        self.item.menu.choose("Quit Quillsatchel")
        self.assertEqual(panel.wait_for_end(), 0)

    def test_a_plain_click_shows_the_panel(self):
        self.start_tray()
        panel = self.start()
        panel.find("Close", "push button").press()
        self.await_hidden(panel)

        self.item.activate()

        wait_for("the panel", panel.window.is_visible)

    def test_it_appears_in_a_tray_that_starts_late(self):
        panel = self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))])
        self.start_tray()

        self.item = StatusItem(panel.process_id)

        self.item.menu.await_entries(MENU_WITHOUT_LAUNCHERS)

    def test_closing_minimizes_the_panel_without_a_tray(self):
        panel = self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))])

        panel.find("Close", "push button").press()

        wait_for("the panel to be minimized", panel.window.is_iconic)
        panel.window.activate()
        wait_for("the panel", panel.window.is_visible)

    def test_closing_minimizes_the_panel_after_the_tray_ends(self):
        tray = self.start_tray()
        panel = self.start()
        tray.end()
        self.assertFalse(is_in_tray(panel.process_id))

        panel.find("Close", "push button").press()

        wait_for("the panel to be minimized", panel.window.is_iconic)

    def test_it_is_embedded_in_an_xembed_tray(self):
        tray = EmbeddingTray(self.session)
        self.addCleanup(tray.end)
        panel = self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))])
        icon = tray.icon_position(CUP_COLOR)
        panel.find("Close", "push button").press()
        self.await_hidden(panel)

        menu = panel.menu_after(lambda: click(icon))
        self.assertEqual([item.name for item in menu.find_all() if item.name],
                         ["Show Quillsatchel", "Always on Top", "Settings…", "Quit Quillsatchel"])
        press_keys("Down", "Return")

        wait_for("the panel", panel.window.is_visible)


class MenuBarTest(DesktopTest):
    def test_a_global_menu_bar_shows_the_menus(self):
        notes = self.session.folder / "registered-menus"
        registrar = self.session.start(str(Path(__file__).with_name("menu_registrar.py")),
                                       str(notes))
        self.addCleanup(end, registrar)
        wait_for("a menu bar", lambda: has_owner("com.canonical.AppMenu.Registrar"))
        panel = self.open_panel([tab("Prompts", node("abc", id=known_id(2)), id=known_id(1))])
        wait_for("menus", notes.exists)
        menu_bar = Menu(*notes.read_text().split())
        self.assertEqual([entry.label for entry in menu_bar.entries()], ["Quillsatchel", "Edit"])
        self.assertEqual(menu_bar.open_submenu("Quillsatchel").entries(),
                         [Entry("About Quillsatchel"), SETTINGS._replace(has_icon=False),
                          SEPARATOR, Entry("Hide Quillsatchel", keys=("Control", "H")), QUIT])
        self.assertFalse(any(entry.is_enabled for entry in menu_bar.open_submenu("Edit").entries()
                             if entry != SEPARATOR))

        panel.editor(1, 1).click()
        press_keys("ctrl+a")
        edit = menu_bar.open_submenu("Edit")
        edit.await_entries([
            Entry("Undo", keys=("Control", "Z"), is_enabled=False),
            Entry("Redo", keys=("Control", "Shift", "Z"), is_enabled=False), SEPARATOR,
            Entry("Cut", keys=("Control", "X")), Entry("Copy", keys=("Control", "C")),
            Entry("Paste", keys=("Control", "V"), is_enabled=False),
            Entry("Select All", keys=("Control", "A"))])
        edit.choose("Cut")
        wait_for_value("the text", [""], panel.node_texts)
        press_keys("ctrl+z")  # the focused text still gets the keys
        wait_for_value("the text", ["abc"], panel.node_texts)

        menu_bar.open_submenu("Quillsatchel").choose("About Quillsatchel")
        panel.find("About Quillsatchel", "dialog")
