"""The panel among other windows, as the window manager has it."""

import signal
import time

from desktop_test import DesktopTest
from library import known_id, node, tab
from waiting import wait_for, wait_for_value
from x11 import (Point, Rect, WindowEvents, active_window, button_held, color_at, glide,
                 managed_windows, move_pointer, open_colored_window, show_desktop, type_text,
                 work_area)

ALL_DESKTOPS = 0xFFFFFFFF
IDEAL_SIZE = (430, 650)
MINIMUM_SIZE = (390, 420)
BACKDROP_COLOR = "#1E8C4B"


class WindowTest(DesktopTest):
    def setUp(self):
        self.panel = self.open_panel([
            tab("Prompts", node("1", id=known_id(2)), node("2", id=known_id(3)), id=known_id(1))])
        self.window = self.panel.window

    def await_frame(self, expected):
        wait_for_value("the panel's frame", expected, self.window.frame)


class PlaceTest(WindowTest):
    def test_it_opens_in_the_middle_of_the_work_area(self):
        area, frame = work_area(), self.window.frame()

        self.assertEqual(frame.size, IDEAL_SIZE)
        self.assertAlmostEqual(frame.x, area.x + (area.width - frame.width) / 2, delta=1)
        self.assertAlmostEqual(frame.y, area.y + (area.height - frame.height) / 2, delta=1)

    def test_it_is_never_smaller_than_its_content_needs(self):
        self.assertEqual(self.window.minimum_size(), MINIMUM_SIZE)
        self.window.ask_for_size(100, 100)
        wait_for_value("the size", MINIMUM_SIZE, lambda: self.window.frame().size)

    def test_its_edge_and_its_corner_resize_it(self):
        frame = self.window.frame()
        self.drag(Point(frame.x + frame.width - 2, frame.center.y), 60, 0,
                  frame._replace(width=frame.width + 60))
        frame = self.window.frame()
        self.drag(Point(frame.x + 2, frame.y + 2), -50, -40,
                  Rect(frame.x - 50, frame.y - 40, frame.width + 50, frame.height + 40))

    def test_its_edge_does_not_shrink_it_below_the_least_size(self):
        frame = self.window.frame()
        self.drag(Point(frame.center.x, frame.y + frame.height - 2), 0, -400,
                  frame._replace(height=MINIMUM_SIZE[1]))

    def test_title_bar_and_name_move_it(self):
        frame = self.window.frame()
        self.drag(Point(frame.x + 110, frame.y + 14), 60, 40,
                  frame._replace(x=frame.x + 60, y=frame.y + 40))
        frame = self.window.frame()
        self.drag(self.panel.find("Quillsatchel", "label").frame.center, -90, 30,
                  frame._replace(x=frame.x - 90, y=frame.y + 30))

    def test_its_background_does_not_move_it(self):
        frame = self.window.frame()
        first, second = (self.panel.node(number, 2).frame for number in (1, 2))
        between_cards = Point(first.center.x, (first.y + first.height + second.y) // 2)
        beside_tabs = Point(frame.x + 300, self.panel.tab("Prompts").frame.center.y)

        for place in (between_cards, beside_tabs):
            with button_held(place):
                glide(place, 60, 40)
                time.sleep(0.3)  # any window manager has begun by now
            self.assertEqual(self.window.frame(), frame)

    def test_the_zoom_button_fills_the_work_area_and_gives_it_back(self):
        frame = self.window.frame()

        self.panel.find("Zoom", "push button").click()
        self.await_frame(work_area())
        self.panel.find("Zoom", "push button").click()

        self.await_frame(frame)

    def drag(self, start, by_x, by_y, expected_frame):
        with button_held(start):
            end = glide(start, by_x, by_y)

            def frame_after_a_nudge():
                # A window manager that only now takes over the pointer waits for it to move.
                move_pointer(end.moved(1, 1))
                move_pointer(end)
                return self.window.frame()

            wait_for_value("the panel's frame", expected_frame, frame_after_a_nudge)
        self.await_frame(expected_frame)


class StackingTest(WindowTest):
    def test_the_switch_raises_and_lowers_the_one_mapped_window(self):
        events = WindowEvents(self.session, self.window)
        switch = self.panel.find("Always on Top", "check box")
        self.await_above(True)

        for is_above in (False, True):
            switch.press()
            wait_for_value("the switch", is_above, lambda: switch.has("checked"))
            self.await_above(is_above)

        self.assertIn(self.window, managed_windows())
        self.assertEqual(events.count("UnmapNotify"), 0)
        self.panel.find("Close", "push button").press()
        wait_for("word of the closing", lambda: events.count("UnmapNotify"))

    def test_another_window_covers_it_only_when_the_switch_is_off(self):
        frame = self.window.frame()
        inside = Point(frame.center.x, frame.y + 5)
        other = self.open_backdrop()
        self.assertNotEqual(color_at(inside), BACKDROP_COLOR)

        self.panel.find("Always on Top", "check box").press()
        self.await_above(False)
        other.activate()

        wait_for_value("the color there", BACKDROP_COLOR, lambda: color_at(inside))

    def test_it_is_on_every_desktop(self):
        self.assertEqual(self.window.desktop(), ALL_DESKTOPS)
        other = self.open_backdrop()
        self.addCleanup(show_desktop, 0)

        show_desktop(1)

        wait_for("the other window out of sight", lambda: not other.is_in_sight())
        self.assertTrue(self.window.is_in_sight())

    def test_minimizing_hides_it_until_it_is_called_back(self):
        self.panel.find("Minimize", "push button").click()
        wait_for("an iconic panel", self.window.is_iconic)
        self.assertFalse(self.window.is_in_sight())

        self.window.activate()

        wait_for("the panel in sight", self.window.is_in_sight)
        self.await_above(True)
        self.assertEqual(self.window.desktop(), ALL_DESKTOPS)

    def test_closing_hides_it_and_the_program_goes_on(self):
        self.panel.find("Close", "push button").click()

        wait_for("the panel out of sight", lambda: not self.window.is_in_sight())
        wait_for("nothing managed", lambda: self.window not in managed_windows())
        time.sleep(0.5)  # a program that ends with its window would have ended by now
        self.assertTrue(self.panel.is_running())
        self.assertIn(self.panel.end(), (0, -signal.SIGTERM))

    def test_a_click_into_an_editor_takes_the_keyboard_from_another_program(self):
        other = self.open_backdrop()
        self.assertEqual(active_window(), other)

        self.panel.editor(1, 2).click()
        wait_for_value("the active window", self.window, active_window)
        type_text("typed ")

        wait_for("the typing in the editor", lambda: "typed" in self.panel.editor(1, 2).text)

    def await_above(self, is_above):
        wait_for_value("above", is_above, lambda: "ABOVE" in self.window.states())

    def open_backdrop(self):
        return open_backdrop(self.session, self.window.frame(), self.addCleanup)


class CornersTest(WindowTest):
    def setUp(self):
        super().setUp()
        self.frame = self.window.frame()
        open_backdrop(self.session, self.frame, self.addCleanup)

    def test_its_corners_are_round_with_a_compositor_and_square_without(self):
        self.await_round_corners(self.session.has_compositor)

    def test_its_corners_follow_the_compositor_as_it_comes_and_goes(self):
        had_compositor = self.session.has_compositor
        self.addCleanup(self.session.set_compositing, had_compositor)

        for is_round in (not had_compositor, had_compositor):
            self.session.set_compositing(is_round)
            self.await_round_corners(is_round)

    def await_round_corners(self, is_round):
        x, y, width, height = self.frame
        corners = [Point(x + across, y + down) for across in (0, width - 1)
                   for down in (0, height - 1)]
        beside = Point(x - 5, y - 5)

        def shows_through():
            return [color_at(corner) == BACKDROP_COLOR for corner in corners]

        wait_for_value("the backdrop", BACKDROP_COLOR, lambda: color_at(beside))
        wait_for_value("what shows through the corners", 4 * [is_round], shows_through)
        self.assertNotEqual(color_at(Point(x + 15, y + 4)), BACKDROP_COLOR)


def open_backdrop(session, frame, add_cleanup):
    """Another program's window, wider and higher than the panel and active."""
    margin = 80
    around = Rect(frame.x - margin, frame.y - margin, frame.width + 2 * margin,
                  frame.height + 2 * margin)
    return open_colored_window(session, "backdrop", BACKDROP_COLOR, around, add_cleanup)
