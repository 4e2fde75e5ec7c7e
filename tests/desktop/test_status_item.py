"""The icon in a real tray: what its menu holds, what its entries do, and how it follows trays."""

import launchers
from applications import RecordingApplication
from desktop_test import DesktopTest
from launchers import application, website
from library import known_id, node, tab
from tray import SEPARATOR, Entry, StatusItem, Tray, has_tray_over_bus, is_in_tray
from waiting import wait_for, wait_for_value
from x11 import active_window, press_keys

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
        wait_for("the panel hidden", lambda: not panel.window.is_in_sight())
        self.assertFalse(panel.window.is_iconic())

    def test_it_appears_with_its_menu(self):
        self.start_tray()
        self.start()

        self.item.await_entries(MENU_WITHOUT_LAUNCHERS)
        self.assertEqual(self.item.property("Id"), "Quillsatchel")
        self.assertEqual(self.item.property("Status"), "Active")
        sizes = {width for width, _, _ in self.item.property("IconPixmap")}
        self.assertLessEqual({16, 22, 24, 32, 48}, sizes)

    def test_its_menu_lists_the_launchers(self):
        self.start_tray()
        self.start(self.filled_slots())

        self.item.await_entries(
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
        wait_for_value("the number of entries", 7, lambda: len(self.item.entries()))

        tray.choose(4, CUP_COLOR)  # where the website was before

        wait_for("the application running", self.application.was_started_with)

    def test_its_entries_do_what_they_say(self):
        self.start_tray()
        panel = self.start(self.filled_slots())
        self.use_entries(panel)

    def test_its_entries_work_after_the_tray_was_restarted(self):
        tray = self.start_tray()
        panel = self.start(self.filled_slots())
        tray.end()
        self.start_tray()
        self.item = StatusItem(panel.process_id)
        self.use_entries(panel)

    def use_entries(self, panel):
        panel.find("Close", "push button").press()
        self.await_hidden(panel)
        self.item.choose("Show Quillsatchel")
        wait_for("the panel", panel.window.is_in_sight)
        wait_for_value("the active window", panel.window, active_window)

        for is_above in (False, True):
            self.item.choose("Always on Top")
            wait_for_value("the level", is_above, lambda: ABOVE in panel.window.states())
            wait_for_value("the mark", ON_TOP if is_above else NOT_ON_TOP,
                           lambda: self.item.entries()[1])

        panel.find("Close", "push button").press()
        self.await_hidden(panel)
        self.item.choose("Settings…")
        panel.find("Quick Launchers", "dialog")

        self.item.choose("_Zither & Lute & Co")
        first, *words = wait_for("the application running", self.application.was_started_with)
        self.assertEqual(words[:-1], ["--tuned"])

        self.item.choose("Quit Quillsatchel")
        self.assertEqual(panel.wait_for_end(), 0)

    def test_a_plain_click_shows_the_panel(self):
        self.start_tray()
        panel = self.start()
        panel.find("Close", "push button").press()
        self.await_hidden(panel)

        self.item.activate()

        wait_for("the panel", panel.window.is_in_sight)

    def test_it_appears_in_a_tray_that_starts_late(self):
        panel = self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))])
        self.start_tray()

        self.item = StatusItem(panel.process_id)

        self.item.await_entries(MENU_WITHOUT_LAUNCHERS)

    def test_closing_minimizes_the_panel_where_there_is_no_tray(self):
        panel = self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))])

        panel.find("Close", "push button").press()

        wait_for("the panel minimized", panel.window.is_iconic)
        panel.window.activate()
        wait_for("the panel", panel.window.is_in_sight)

    def test_closing_minimizes_the_panel_once_the_tray_is_gone(self):
        tray = self.start_tray()
        panel = self.start()
        tray.end()
        self.assertFalse(is_in_tray(panel.process_id))

        panel.find("Close", "push button").press()

        wait_for("the panel minimized", panel.window.is_iconic)
