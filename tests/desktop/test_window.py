"""Position, size, level and look of the panel's window."""

import signal
import time

from desktop_test import DesktopTest
from library import known_id, node, tab
from session import WINDOW_MANAGER
from tray import StatusItem, Tray
from waiting import wait_for, wait_for_value
from x11 import (Point, Rect, WindowEvents, active_window, add_monitor, button_held, color_at,
                 glide, managed_windows, move_pointer, set_blur_support, open_colored_window,
                 remove_monitor, show_desktop, type_text, windows_named, work_area)

ALL_DESKTOPS = 0xFFFFFFFF
IDEAL_SIZE = (430, 650)
MINIMUM_SIZE = (390, 420)
BACKDROP_COLOR = "#1E8C4B"
XFWM4 = ("xfwm4", "--compositor=off")


class WindowTest(DesktopTest):
    def setUp(self):
        self.panel = self.open_panel([
            tab("Prompts", node("1", id=known_id(2)), node("2", id=known_id(3)), id=known_id(1))])
        self.window = self.panel.window

    def start_tray_with_icon(self):
        """Starts a tray, and returns the program's icon in it."""
        tray = Tray(self.session)
        self.addCleanup(tray.end)
        return StatusItem(self.panel.process_id)

    def await_frame(self, expected):
        wait_for_value("the panel's frame", expected, self.window.frame)

    def settled_frame(self):
        def frame_if_still():
            frame = self.window.frame()
            time.sleep(0.2)
            return frame if self.window.frame() == frame else None

        return wait_for("a stable frame", frame_if_still)


class TrayTest(WindowTest):
    """A panel with a tray, whose icon shows the panel again."""

    def setUp(self):
        tray = Tray(self.session)
        self.addCleanup(tray.end)
        super().setUp()
        self.item = StatusItem(self.panel.process_id)

    def close(self):
        self.panel.find("Close", "push button").press()
        wait_for("the panel to be unmanaged", lambda: self.window not in managed_windows())
        time.sleep(0.5)  # so that the window manager forgets the window's state

    def show(self):
        """The window may be new: Qt recreates it if its level changed while it was hidden."""
        self.item.activate()
        self.window, = wait_for("the panel to be visible", lambda: windows_named("Quillsatchel"))


class OpeningTest(DesktopTest):
    def test_it_opens_centered_and_with_the_keyboard(self):
        # A window manager would prefer the free space beside this window.
        open_colored_window(self.session, "left side", BACKDROP_COLOR, Rect(0, 0, 500, 900),
                            self.addCleanup)

        window = self.open_panel([tab("Prompts", id=known_id(1))]).window

        wait_for_value("the active window", window, active_window)
        area, frame = work_area(), window.frame()
        self.assertEqual(frame.size, IDEAL_SIZE)
        self.assertAlmostEqual(frame.x, area.x + (area.width - frame.width) / 2, delta=1)
        self.assertAlmostEqual(frame.y, area.y + (area.height - frame.height) / 2, delta=1)

    def test_it_fits_the_height_of_a_low_screen(self):
        self.expect_frame_on_screen((1280, 600), 1, (430, 600))
        self.expect_frame_on_screen((1280, 720), 1.5, (430 * 1.5, 720))
        self.expect_frame_on_screen((1280, 768), 1.25, (430 * 1.25, 768))

    def test_its_title_bar_is_in_view_on_a_very_low_screen(self):
        self.expect_frame_on_screen((1280, 400), 1, (430, 420))
        self.expect_frame_on_screen((1280, 720), 2, (860, 840))

    def expect_frame_on_screen(self, screen, scale, size):
        """Allows a pixel for fractions of a point."""
        add_monitor("low", Rect(0, 0, *screen), "screen", self.addCleanup)
        panel = self.open_panel([tab("Prompts", id=known_id(1))], scale=scale)
        frame = panel.window.frame()
        panel.end()
        remove_monitor("low")
        with self.subTest(screen=screen, scale=scale):
            self.assertEqual(frame.y, 0)
            self.assertAlmostEqual(frame.x, (screen[0] - size[0]) / 2, delta=2)
            self.assertAlmostEqual(frame.width, size[0], delta=1)
            self.assertAlmostEqual(frame.height, size[1], delta=1)
            self.assertLessEqual(frame.height, max(screen[1], 420 * scale))


class GeometryTest(WindowTest):
    def test_it_is_never_smaller_than_its_content_needs(self):
        self.assertEqual(self.window.minimum_size(), MINIMUM_SIZE)
        self.window.request_size(100, 100)
        wait_for_value("the size", MINIMUM_SIZE, lambda: self.window.frame().size)

    def test_its_edges_and_corners_resize_it(self):
        frame = self.window.frame()
        self.drag(Point(frame.x + frame.width - 2, frame.center.y), 60, 0,
                  lambda begun: begun._replace(width=begun.width + 60))
        frame = self.window.frame()
        self.drag(Point(frame.x + 2, frame.y + 2), -50, -40,
                  lambda begun: Rect(begun.x - 50, begun.y - 40, begun.width + 50,
                                     begun.height + 40))

    def test_its_edge_stops_at_the_minimum_size(self):
        frame = self.window.frame()
        self.drag(Point(frame.center.x, frame.y + frame.height - 2), 0, -400,
                  lambda begun: begun._replace(height=MINIMUM_SIZE[1]))

    def test_title_bar_and_name_move_it(self):
        frame = self.window.frame()
        self.drag(Point(frame.x + 110, frame.y + 14), 60, 40,
                  lambda begun: begun._replace(x=begun.x + 60, y=begun.y + 40))
        self.drag(self.panel.find("Quillsatchel", "label").frame.center, -90, 30,
                  lambda begun: begun._replace(x=begun.x - 90, y=begun.y + 30))

    def test_its_name_moves_it_from_the_first_point(self):
        frame = self.window.frame()
        start = self.panel.find("Quillsatchel", "label").frame.center

        def follows():
            # The window manager may grab the pointer only after a movement.
            move_pointer(start.moved(2, 0))
            move_pointer(start.moved(4, 0))
            x, *rest = self.window.frame()
            return rest == list(frame)[1:] and frame.x + 2 <= x <= frame.x + 4

        with button_held(start):
            wait_for("the panel to follow", follows)

    def test_clicks_on_its_name_leave_it_where_it_is(self):
        frame = self.window.frame()
        name = self.panel.find("Quillsatchel", "label")
        for _ in range(10):
            name.click()
        glide(name.frame.center, 60, 40)
        time.sleep(0.3)  # long enough for a window manager that still holds the window to move it
        self.assertEqual(self.window.frame(), frame)

    def test_its_background_does_not_move_it(self):
        frame = self.window.frame()
        first, second = (self.panel.node(number, 2).frame for number in (1, 2))
        between_cards = Point(first.center.x, (first.y + first.height + second.y) // 2)
        beside_tabs = Point(frame.x + 300, self.panel.tab("Prompts").frame.center.y)

        for point in (between_cards, beside_tabs):
            with button_held(point):
                glide(point, 60, 40)
                time.sleep(0.3)  # long enough for a window manager to start moving it
            self.assertEqual(self.window.frame(), frame)

    def test_the_zoom_button_fills_the_work_area_and_restores(self):
        frame = self.window.frame()

        self.panel.find("Zoom", "push button").click()
        self.await_frame(work_area())
        self.panel.find("Zoom", "push button").click()

        self.await_frame(frame)

    def drag(self, start, by_x, by_y, expected_after):
        """`expected_after` computes the expected frame from the frame at which the window starts to
        follow, because a window manager may miss the first few points."""
        frame = self.window.frame()

        def follows():
            # A window manager that has only just grabbed the pointer waits for a movement.
            move_pointer(begun_at.moved(5, 5))
            nudged = self.window.frame()
            move_pointer(begun_at)
            return {nudged, self.window.frame()} != {frame}

        with button_held(start):
            begun_at = glide(start, by_x // 10 or 5, by_y // 10 or 5)
            wait_for("the panel to follow", follows)
            expected = expected_after(self.settled_frame())
            glide(begun_at, by_x, by_y)
            self.await_frame(expected)
        self.assertEqual(self.settled_frame(), expected)


class ZoomTest(TrayTest):
    def test_it_unzooms_after_being_closed(self):
        self.expect_frame_kept_by_zooming_and_closing(self.zoom)

    def test_it_unzooms_if_the_window_manager_forgets_the_frame(self):
        self.use_xfwm4()
        self.expect_frame_kept_by_zooming_and_closing(self.zoom)

    def test_it_unzooms_after_the_window_manager_zoomed_it(self):
        self.expect_frame_kept_by_zooming_and_closing(self.zoom_from_outside)

    def test_it_unzooms_if_the_new_size_arrives_before_the_state(self):
        self.use_xfwm4()
        self.expect_frame_kept_by_zooming_and_closing(self.zoom_from_outside)

    def expect_frame_kept_by_zooming_and_closing(self, zoom):
        frame = Rect(120, 60, 440, 580)
        self.window.request_size(*frame.size)
        self.window.request_position(frame.x, frame.y)
        self.await_frame(frame)

        for _ in range(2):
            self.settled_frame()  # the last change may still be in progress
            zoom()
            self.await_frame(work_area())
            self.close()
            self.show()
            self.await_frame(work_area())
            self.zoom()
            self.await_frame(frame)
        self.close()
        self.show()
        self.assertEqual(self.settled_frame(), frame)

    def zoom(self):
        self.panel.find("Zoom", "push button").press()

    def zoom_from_outside(self):
        self.window.request_maximized()

    def use_xfwm4(self):
        self.addCleanup(self.session.use_window_manager, *WINDOW_MANAGER)
        self.session.use_window_manager(*XFWM4)
        # xfwm4 sets this state on managed windows that are on all desktops.
        wait_for("the panel to be managed", lambda: "STICKY" in self.window.states())


class StackingTest(WindowTest):
    def test_the_switch_changes_the_level_without_unmapping(self):
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
        wait_for("UnmapNotify", lambda: events.count("UnmapNotify"))

    def test_other_windows_cover_it_only_with_the_switch_off(self):
        frame = self.window.frame()
        inside = Point(frame.center.x, frame.y + 5)
        other = self.open_backdrop()
        self.assertNotEqual(color_at(inside), BACKDROP_COLOR)

        self.panel.find("Always on Top", "check box").press()
        self.await_above(False)
        other.activate()

        wait_for_value("the colour there", BACKDROP_COLOR, lambda: color_at(inside))

    def test_it_is_on_every_desktop(self):
        self.assertEqual(self.window.desktop(), ALL_DESKTOPS)
        other = self.open_backdrop()
        self.addCleanup(show_desktop, 0)

        show_desktop(1)

        wait_for("the other window to be hidden", lambda: not other.is_visible())
        self.assertTrue(self.window.is_visible())

    def test_minimizing_hides_it_until_it_is_activated(self):
        self.panel.find("Minimize", "push button").click()
        wait_for("the panel to be minimized", self.window.is_iconic)
        self.assertFalse(self.window.is_visible())

        self.window.activate()

        wait_for("the panel to be visible", self.window.is_visible)
        self.await_above(True)
        self.assertEqual(self.window.desktop(), ALL_DESKTOPS)

    def test_closing_hides_it_and_keeps_the_program_running(self):
        self.start_tray_with_icon()
        self.panel.find("Close", "push button").click()

        wait_for("the panel to be hidden", lambda: not self.window.is_visible())
        wait_for("the panel to be unmanaged", lambda: self.window not in managed_windows())
        time.sleep(0.5)  # long enough for a program that quits with its window
        self.assertTrue(self.panel.is_running())
        self.assertIn(self.panel.end(), (0, -signal.SIGTERM))

    def test_clicking_an_editor_takes_the_keyboard(self):
        other = self.open_backdrop()
        self.assertEqual(active_window(), other)

        self.panel.editor(1, 2).click()
        wait_for_value("the active window", self.window, active_window)
        type_text("typed ")

        wait_for("the typing in the editor", lambda: "typed" in self.panel.editor(1, 2).text)

    def await_above(self, is_above):
        wait_for_value("the above state", is_above, lambda: "ABOVE" in self.window.states())

    def open_backdrop(self):
        return open_backdrop(self.session, self.window.frame(), self.addCleanup)


class WindowManagersTest(DesktopTest):
    """The panel starts before the window manager."""

    def setUp(self):
        self.session.use_window_manager()
        self.addCleanup(self.session.use_window_manager, *WINDOW_MANAGER)
        self.panel = self.open_panel([tab("Prompts", id=known_id(1))])

    def test_it_is_above_with_a_late_window_manager(self):
        self.start_window_manager()
        self.expect_states(is_above=True)

    def test_it_is_not_above_if_the_switch_was_off(self):
        switch = self.panel.find("Always on Top", "check box")
        switch.press()
        wait_for("the switch to be off", lambda: not switch.has("checked"))
        self.start_window_manager()
        self.expect_states(is_above=False)

    def test_it_stays_above_with_a_replaced_window_manager(self):
        for window_manager in (WINDOW_MANAGER, XFWM4, WINDOW_MANAGER):
            self.session.use_window_manager(*window_manager)
            self.expect_states(is_above=True)

    def start_window_manager(self):
        self.session.use_window_manager(*WINDOW_MANAGER)
        wait_for("the panel to be managed", lambda: self.panel.window in managed_windows())

    def expect_states(self, is_above):
        window = self.panel.window
        wait_for_value("the above state", is_above, lambda: "ABOVE" in window.states())
        wait_for_value("the desktop", ALL_DESKTOPS, window.desktop)
        time.sleep(0.3)  # for late changes by the window manager
        self.assertEqual(window.desktop(), ALL_DESKTOPS)
        self.assertEqual("ABOVE" in window.states(), is_above)


class ScreensTest(WindowTest):
    """Two monitors side by side, with the panel on the right one."""

    def setUp(self):
        super().setUp()
        add_monitor("left", Rect(0, 0, 640, 1024), "screen", self.addCleanup)
        add_monitor("right", Rect(640, 0, 640, 1024), "none", self.addCleanup)
        self.window.request_position(740, 200)
        self.await_frame(Rect(740, 200, *IDEAL_SIZE))

    def test_it_stays_while_its_monitor_exists(self):
        remove_monitor("left")
        time.sleep(0.5)  # long enough for a wrong move
        self.assertEqual(self.window.frame(), Rect(740, 200, *IDEAL_SIZE))

    def test_it_moves_to_the_remaining_monitor(self):
        remove_monitor("right")
        self.await_on_left_monitor()

    def test_it_moves_to_the_remaining_monitor_while_hidden(self):
        item = self.start_tray_with_icon()
        self.panel.find("Close", "push button").click()
        wait_for("the panel to be hidden", lambda: not self.window.is_visible())

        remove_monitor("right")
        time.sleep(0.5)  # so that it is not moved only when it is shown
        item.activate()

        wait_for("the panel to be visible", self.window.is_visible)
        self.await_on_left_monitor()

    def await_on_left_monitor(self):
        self.await_frame(Rect(640 - IDEAL_SIZE[0], 200, *IDEAL_SIZE))


class ShrinkingScreenTest(TrayTest):
    SMALL = Rect(0, 0, 800, 600)
    BOTTOM_RIGHT = Rect(1280 - 430, 1024 - 650, *IDEAL_SIZE)

    def setUp(self):
        super().setUp()
        self.window.request_position(self.BOTTOM_RIGHT.x, self.BOTTOM_RIGHT.y)
        self.await_frame(self.BOTTOM_RIGHT)

    def test_it_moves_and_shrinks_into_view(self):
        self.shrink_screen()
        self.await_moved_and_shrunk()

    def test_it_moves_and_shrinks_into_view_while_hidden(self):
        self.close()
        self.shrink_screen()
        self.show()
        self.await_moved_and_shrunk()

    def test_it_moves_and_shrinks_into_view_while_zoomed(self):
        zoom = self.panel.find("Zoom", "push button")
        zoom.press()
        self.await_frame(work_area())
        self.shrink_screen()
        zoom.press()
        self.await_moved_and_shrunk()

    def test_showing_it_brings_it_into_view(self):
        for action in (lambda: None, self.close):
            self.window.request_position(1100, 900)
            self.await_frame(Rect(1100, 900, *IDEAL_SIZE))
            action()
            self.show()
            self.await_frame(self.BOTTOM_RIGHT)

    def shrink_screen(self):
        add_monitor("small", self.SMALL, "screen", self.addCleanup)
        time.sleep(0.5)  # for everything that follows a screen change

    def await_moved_and_shrunk(self):
        """At the right edge, and as high as the screen, perhaps minus the tray's bar."""
        def is_in_place():
            x, y, width, height = self.window.frame()
            return (x, width, y + height) == (370, 430, 600) and 0 <= y < 40

        wait_for("the panel in view", is_in_place)


class CornersTest(WindowTest):
    def setUp(self):
        super().setUp()
        self.frame = self.window.frame()
        open_backdrop(self.session, self.frame, self.addCleanup)

    def test_its_corners_are_round_only_with_a_compositor(self):
        self.await_round_corners(self.session.has_compositor)

    def test_its_corners_follow_the_compositor(self):
        had_compositor = self.session.has_compositor
        self.addCleanup(self.session.set_compositing, had_compositor)

        for is_round in (not had_compositor, had_compositor):
            self.session.set_compositing(is_round)
            self.await_round_corners(is_round)

    def await_round_corners(self, is_round):
        beside = Point(self.frame.x - 5, self.frame.y - 5)
        look = "the backdrop" if is_round else "the panel's edge"

        wait_for_value("the backdrop", BACKDROP_COLOR, lambda: color_at(beside))
        wait_for_value("the corners", 4 * [look], self.corner_looks)

    def corner_looks(self):
        x, y, width, height = self.frame
        return [corner_look(Point(across, down), inward)
                for across, inward in ((x, 1), (x + width - 1, -1))
                for down in (y, y + height - 1)]


class BlurTest(WindowTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(self.session.set_compositing, self.session.has_compositor)
        self.session.set_compositing(True)
        self.assertEqual(self.window.blurred_area(), [])
        self.addCleanup(set_blur_support, False)

    def test_it_blurs_its_background_within_its_round_corners(self):
        set_blur_support(True)
        self.await_blur_of(*IDEAL_SIZE)
        self.window.request_size(500, 600)
        self.await_blur_of(500, 600)

    def test_it_is_more_transparent_while_blurred(self):
        frame = self.window.frame()
        open_colored_window(self.session, "backdrop", "#FFFFFF", frame, self.addCleanup)
        point = Point(frame.x + 4, frame.center.y)
        sharp = color_at(point)

        def grows_lighter():
            return min(channels(color_at(point))) > min(channels(sharp)) + 5

        for ends in (lambda: set_blur_support(False), lambda: self.session.set_compositing(False)):
            set_blur_support(True)
            wait_for("a lighter background", grows_lighter)
            ends()
            wait_for("the background as before", lambda: not grows_lighter())

    def await_blur_of(self, width, height):
        wait_for_value("the blurred area", (width, height),
                       lambda: size_of(self.window.blurred_area()))
        area = self.window.blurred_area()
        self.assertIn(Rect(0, 10, width, height - 20), area)
        self.assertIn(Rect(10, 0, width - 20, 1), area)
        self.assertIn(Rect(10, height - 1, width - 20, 1), area)


def size_of(area):
    """The size of the rectangles' union."""
    return (max((each.x + each.width for each in area), default=0),
            max((each.y + each.height for each in area), default=0))


def corner_look(corner, inward):
    color, edge_color = color_at(corner), color_at(corner.moved(20 * inward, 0))
    if color == BACKDROP_COLOR:
        return "the backdrop"
    if all(abs(here - there) < 24 for here, there in zip(channels(color), channels(edge_color))):
        return "the panel's edge"
    return f"{color}, and the edge beside it {edge_color}"


def channels(color):
    return bytes.fromhex(color[1:])


def open_backdrop(session, frame, add_cleanup):
    """Opens another program's active window, larger than the panel."""
    margin = 80
    around = Rect(frame.x - margin, frame.y - margin, frame.width + 2 * margin,
                  frame.height + 2 * margin)
    return open_colored_window(session, "backdrop", BACKDROP_COLOR, around, add_cleanup)
