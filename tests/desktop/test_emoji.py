"""Emoji are drawn with the machine's color font."""

import colorsys
import pathlib
import shutil

from desktop_test import DesktopTest
from launchers import encode, website
from library import encode as encode_library, known_id, node, tab
from waiting import wait_for
from x11 import colors_in, press_keys, run

EMOJI = "\U0001F600"  # a yellow face
FOUR_EMOJI = EMOJI * 4


class EmojiTest(DesktopTest):
    def test_emoji_are_drawn_in_color_everywhere(self):
        panel = self.open_panel_with_emoji()
        self.expect_yellow(panel.editor(1, 1).frame)
        chip = panel.tab(FOUR_EMOJI)
        self.expect_yellow(chip.frame)

        chip.click(times=2)
        self.expect_yellow(panel.find("Tab name", "text").frame)
        press_keys("Return")

        card = panel.open_settings()
        self.expect_yellow(card.find("Launcher 1", "panel").find(FOUR_EMOJI, "label").frame)

    def test_emoji_are_colored_if_the_general_font_has_monochrome_ones(self):
        panel = self.open_panel_with_emoji(self.fonts("DejaVu Sans", "Noto Color Emoji"))
        self.expect_yellow(panel.editor(1, 1).frame)
        self.expect_yellow(panel.tab(FOUR_EMOJI).frame)
        card = panel.open_settings()
        self.expect_yellow(card.find("Launcher 1", "panel").find(FOUR_EMOJI, "label").frame)

    def test_letters_and_digits_use_the_desktop_font(self):
        panel = self.open_panel([tab("Prompts", node("0123456789 #*", id=known_id(2)),
                                     id=known_id(1))])
        self.assertFalse(list(filter(is_yellow, colors_in(panel.editor(1, 1).frame))))

    def fonts(self, *families):
        """Environment variables that restrict the fonts to these families."""
        folder = self.session.folder / "fonts"
        folder.mkdir()
        self.addCleanup(shutil.rmtree, folder)
        for family in families:
            file = pathlib.Path(run("env", "-u", "FONTCONFIG_FILE", "fc-match",
                                    "--format=%{file}", family))
            (folder / file.name).symlink_to(file)
        rules = folder / "fonts.conf"
        rules.write_text(f"<fontconfig><dir>{folder}</dir><include>/etc/fonts/conf.d</include>"
                         f"<cachedir>{folder}/cache</cachedir></fontconfig>")
        return {"FONTCONFIG_FILE": str(rules)}

    def open_panel_with_emoji(self, environment=None):
        self.session.clear_data()
        self.session.data_folder.mkdir(mode=0o700)
        self.library_file.write_bytes(encode_library(
            [tab(FOUR_EMOJI, node(FOUR_EMOJI, id=known_id(2)), id=known_id(1))]))
        (self.session.data_folder / "launchers.json").write_text(encode(
            [website(FOUR_EMOJI, "https://example.com", known_id(3)), None, None, None, None]))
        return self.open_panel(environment=environment)

    def expect_yellow(self, frame):
        wait_for("yellow pixels", lambda: any(map(is_yellow, colors_in(frame))))


def is_yellow(color):
    hue, saturation, value = colorsys.rgb_to_hsv(*(part / 255 for part in color))
    return 0.08 < hue < 0.18 and saturation > 0.5 and value > 0.6
