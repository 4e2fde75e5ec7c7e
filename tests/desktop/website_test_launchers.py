"""A website as a launcher, with a downloaded icon."""

from launchers import website
from launchers_test import LaunchersTest
from library import FRESH_ID
from waiting import wait_for, wait_for_value
from web_server import WebServer, png
from x11 import color_at, press_keys, type_text

SECRET_COLOR = (0x12, 0xC4, 0x55)


class WebsiteTest(LaunchersTest):
    def test_a_website_is_typed_and_its_icon_appears(self):
        icon = png(SECRET_COLOR)
        server = WebServer(icon)
        self.addCleanup(server.close)
        panel = self.start()
        card = panel.open_settings()

        slot = self.slot(card, 2)
        slot.find("Website", "text").click()
        type_text("http://127.0.0.1/start?q=1")
        press_keys("Return")

        slot.find("127.0.0.1")
        slot.find("http://127.0.0.1/start?q=1")
        stored = website("127.0.0.1", "http://127.0.0.1/start?q=1", FRESH_ID)
        self.expect_saved_slots(None, stored, None, None, None)
        cached = self.session.data_folder / "Favicons" / f"{self.saved_slots()[1]['id']}.png"
        wait_for("the icon", cached.exists)
        self.assertEqual(cached.read_bytes(), icon)
        self.assertEqual(server.paths, ["/favicon.ico"])
        # After 9 points of padding: the badge (17 points wide), a gap of 8, and the icon (22).
        badge = slot.frame
        point = badge.center._replace(x=badge.x + 9 + 17 + 8 + 11, y=badge.y + 9 + 13)
        wait_for_value("the icon on the screen", "#%02X%02X%02X" % SECRET_COLOR,
                       lambda: color_at(point))

        self.close_settings(panel)
        slot = self.slot(panel.open_settings(), 2)
        self.assertEqual(slot.find("Website", "text").text, "http://127.0.0.1/start?q=1")

        slot.find("Clear launcher", "push button").press()
        slot.find("Empty launcher")
        self.expect_saved_slots(None, None, None, None, None)
        wait_for("the icon to be removed", lambda: not cached.exists())
        self.assertEqual(slot.find("Website", "text").text, "")
