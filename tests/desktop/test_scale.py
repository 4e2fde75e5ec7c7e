"""The panel at several scales, checked in pixels."""

import time

from desktop_test import DesktopTest
from library import known_id, node, tab
from settings_manager import SettingsManager
from tray import StatusItem, Tray
from waiting import wait_for, wait_for_value
from x11 import Picture, Point, Rect, color_at, open_colored_window, work_area

WHITE, BLACK = "#FFFFFF", "#000000"
CORNER = 12  # points; slightly more than the radius
MAX_SHINE_THROUGH = 16  # of 255; far less than through a half-covered pixel
MAX_HEIGHT = 819  # pixels; leaves room above the panel for another window's title bar
SIZE, MINIMUM = (430, 650), (390, 420)  # points
SIDES = ("left", "right", "top", "bottom")


class ScaleChangeTest(DesktopTest):
    """The desktop's resolution changes while the panel is open."""

    def setUp(self):
        self.settings = SettingsManager(**{"Xft/DPI": 1024 * 96})
        self.addCleanup(self.settings.end)
        self.panel = self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))])
        self.window = self.panel.window
        self.window.request_position(120, 30)
        self.await_frame(Rect(120, 30, *SIZE))

    def test_it_scales_with_its_contents_and_keeps_its_position(self):
        for scale in (1.25, 1.5, 1.25, 1, 1.5, 1):
            self.set_scale(scale)
            self.await_frame(Rect(120, 30, *pixels(SIZE, scale)))
            self.expect_contents_within_panel(scale)

    def test_it_can_still_be_resized(self):
        self.set_scale(1.5)
        self.await_frame(Rect(120, 30, *pixels(SIZE, 1.5)))
        self.window.request_size(100, 100)
        self.await_frame(Rect(120, 30, *pixels(MINIMUM, 1.5)))
        self.window.request_size(750, 900)
        self.await_frame(Rect(120, 30, 750, 900))
        self.expect_contents_within_panel(1.5)

    def test_it_keeps_the_size_the_user_gave_it(self):
        self.window.request_size(500, 600)
        self.await_frame(Rect(120, 30, 500, 600))
        self.set_scale(1.5)
        self.await_frame(Rect(120, 30, 750, 900))
        self.expect_contents_within_panel(1.5)
        self.set_scale(1)
        self.await_frame(Rect(120, 30, 500, 600))

    def test_it_shrinks_to_fit_on_the_screen_and_grows_again(self):
        self.set_scale(2)
        self.await_frame(Rect(120, 0, 2 * SIZE[0], 1024))
        self.set_scale(1)
        wait_for_value("the size", SIZE, lambda: self.window.frame().size)

    def test_it_rescales_while_hidden(self):
        tray = Tray(self.session)
        self.addCleanup(tray.end)
        item = StatusItem(self.panel.process_id)
        self.panel.find("Close", "push button").click()
        wait_for("the panel to be hidden", lambda: not self.window.is_visible())

        self.set_scale(1.5)
        time.sleep(0.5)  # so that it is not resized only when it is shown
        item.activate()

        wait_for("the panel to be visible", self.window.is_visible)
        self.await_frame(Rect(120, 30, *pixels(SIZE, 1.5)))
        self.expect_contents_within_panel(1.5)

    def test_it_rescales_while_zoomed(self):
        self.panel.find("Zoom", "push button").click()
        self.await_frame(work_area())
        self.set_scale(1.5)
        wait_for_value("the width of New Node", round(work_area().width / 1.5) - 16,
                       lambda: self.panel.find("New Node", "push button").frame.width)
        self.expect_contents_within_panel(1.5)

        self.panel.find("Zoom", "push button").press()

        self.await_frame(Rect(120, 30, *pixels(SIZE, 1.5)))
        self.expect_contents_within_panel(1.5)

    def set_scale(self, scale):
        self.settings.set({"Xft/DPI": int(1024 * 96 * scale)})

    def await_frame(self, expected):
        wait_for_value("the panel's frame", expected, self.window.frame)

    def expect_contents_within_panel(self, scale):
        """AT-SPI positions are in points."""
        panel = Rect(*(int(length / scale) for length in self.window.frame()))
        for name, role in (("New tab", "push button"), ("Always on Top", "check box"),
                           ("Copy", "push button"), ("New Node", "push button")):
            wait_for(f"{name} in the panel",
                     lambda: panel.contains(self.panel.find(name, role).frame))


class WindowScaleTest(DesktopTest):
    """A desktop that scales windows by a factor instead of a higher DPI."""

    def test_it_applies_the_window_scale(self):
        self.open_with({"Gdk/WindowScalingFactor": 2})
        self.assertEqual(self.panel.window.frame().width, 2 * SIZE[0])

    def test_it_multiplies_the_scale_with_the_resolution(self):
        self.open_with({"Gdk/WindowScalingFactor": 2, "Xft/DPI": 1024 * 120})
        self.assertEqual(self.panel.window.minimum_size()[0], 2.5 * MINIMUM[0])

    def test_it_scales_once_if_the_resolution_includes_the_scale(self):
        self.open_with({"Gdk/WindowScalingFactor": 2, "Xft/DPI": 1024 * 192,
                        "Gdk/UnscaledDPI": 1024 * 96})
        self.assertEqual(self.panel.window.frame().width, 2 * SIZE[0])

    def test_it_prefers_the_scale_in_the_environment(self):
        self.open_with({"Gdk/WindowScalingFactor": 2}, {"QT_SCALE_FACTOR": "1"})
        self.assertEqual(self.panel.window.frame().size, SIZE)

    def open_with(self, settings, environment=None):
        manager = SettingsManager(**settings)
        self.addCleanup(manager.end)
        self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))],
                        environment=environment)


class FrameTest(DesktopTest):
    def test_the_frame_is_exact_at_scale_1_25(self):
        self.open_at(1.25)
        self.expect_exact_frame(1.25)

    def test_the_frame_is_exact_at_scale_1_5(self):
        self.open_at(1.5)
        self.expect_exact_frame(1.5)

    def test_the_frame_is_exact_at_scale_1_75(self):
        self.open_at(1.75)
        self.expect_exact_frame(1.75)

    def test_the_frame_is_exact_at_120_dots_per_inch(self):
        self.open_at_resolution(120)
        self.expect_exact_frame(1.25)

    def test_the_frame_is_exact_at_144_dots_per_inch(self):
        self.open_at_resolution(144)
        self.expect_exact_frame(1.5)

    def test_the_frame_is_exact_with_a_card_over_it(self):
        self.open_at(1.25)
        self.panel.open_settings()
        self.expect_exact_frame(1.25)

    def open_at_resolution(self, dots_per_inch):
        settings = SettingsManager(**{"Xft/DPI": 1024 * dots_per_inch})
        self.addCleanup(settings.end)
        self.open_at()
        self.assertEqual(self.window.frame().width, round_half_up(430 * dots_per_inch / 96))

    def open_at(self, scale=None):
        self.open_panel([tab("Prompts", node("1", id=known_id(2)), id=known_id(1))],
                        environment={"QT_SCALE_FACTOR": str(scale)} if scale else None)
        self.window = self.panel.window
        self.make_room_around(self.window.frame())

    def make_room_around(self, frame):
        if frame.height > MAX_HEIGHT:
            self.window.request_size(frame.width, MAX_HEIGHT)
            self.window.request_position(frame.x, 100)
            wait_for("room above the panel", lambda: self.window.frame().y == 100)
            wait_for("a lower panel", lambda: self.window.frame().height <= MAX_HEIGHT)

    def expect_exact_frame(self, scale):
        on_white, on_black = self.picture_on(WHITE), self.picture_on(BLACK)
        frame, corner = self.window.frame(), round_half_up(CORNER * scale)
        for side in SIDES:
            self.expect_backdrop_beside(side, frame, on_white)
            self.expect_nothing_shines_through(side, frame, corner, on_white, on_black)
            self.expect_border(side, frame, scale, on_white)
        self.expect_equal_corners(frame, corner, on_white)

    def expect_backdrop_beside(self, side, frame, on_white):
        for along in range(length_of(side, frame)):
            self.assertEqual(on_white.pixel(*pixel_at(side, frame, along, -1)), (255, 255, 255),
                             f"beside the {side} edge, {along}")

    def expect_nothing_shines_through(self, side, frame, corner, on_white, on_black):
        for along in range(corner, length_of(side, frame) - corner):
            pixel = pixel_at(side, frame, along, 0)
            difference = distance(on_white.pixel(*pixel), on_black.pixel(*pixel))
            self.assertLess(difference, MAX_SHINE_THROUGH, f"at the {side} edge, {along}")

    def expect_border(self, side, frame, scale, picture):
        """The border is whole pixels wide, and lighter than the panel inside it."""
        width = round_half_up(scale)
        middle = length_of(side, frame) // 4
        colors = [picture.pixel(*pixel_at(side, frame, middle, depth)) for depth in range(4)]
        for depth, color in enumerate(colors):
            lighter = distance(color, colors[-1])
            message = f"{side} edge, pixel {depth} of {colors}"
            if depth < width:
                self.assertGreater(lighter, 15, message)
            else:
                self.assertLess(lighter, 4, message)

    def expect_equal_corners(self, frame, corner, picture):
        """Compares the rim only, because there are buttons further inside."""
        right, bottom = frame.x + frame.width - 1, frame.y + frame.height - 1
        rim = corner // 4
        for across in range(corner):
            for down in range(corner if across < rim else rim):
                colors = [picture.pixel(x, y)
                          for x in (frame.x + across, right - across)
                          for y in (frame.y + down, bottom - down)]
                for color in colors[1:]:
                    self.assertLess(distance(color, colors[0]), 24, f"{across}, {down}: {colors}")

    def picture_on(self, color):
        """A screenshot with a window of this colour behind the panel."""
        frame = self.window.frame()
        margin = 80  # more than the decoration of that window
        around = Rect(frame.x - margin, frame.y - margin, frame.width + 2 * margin,
                      frame.height + 2 * margin)
        open_colored_window(self.session, f"backdrop {color}", color, around, self.addCleanup)
        beside = Point(frame.x - 2, frame.center.y)
        wait_for_value("the backdrop", color, lambda: color_at(beside))
        return Picture()


def length_of(side, frame):
    return frame.height if side in ("left", "right") else frame.width


def pixel_at(side, frame, along, depth):
    """The pixel `along` pixels from the start of a side, `depth` pixels inside its edge."""
    right, bottom = frame.x + frame.width - 1, frame.y + frame.height - 1
    return {"left": (frame.x + depth, frame.y + along), "right": (right - depth, frame.y + along),
            "top": (frame.x + along, frame.y + depth),
            "bottom": (frame.x + along, bottom - depth)}[side]


def distance(color, other):
    """The largest difference of a channel."""
    return max(abs(here - there) for here, there in zip(color, other))


def pixels(size, scale):
    return tuple(round_half_up(length * scale) for length in size)


def round_half_up(number):
    return int(number + 0.5)
