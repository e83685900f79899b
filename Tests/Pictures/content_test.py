#!/usr/bin/python3
"""The pictures have the intended sizes, positions and colours of the interface, measured on the pictures."""

import unittest

from PIL import Image

from drawing import TABS, pictures
from measuring import (ACCENT, BACKGROUND, CARD, CARD_HEIGHT, CARD_TOP, DIVIDER, GLYPH, GREEN, HAIRLINE, LEFT,
                       LOGIN_HEIGHT, LOGIN_TOP, PRIMARY, RIGHT, ROW_HEIGHT, TABS_BOTTOM, TABS_TOP, Colour, at, column,
                       mixed, row, runs)


class Content:
    """Checks for both colour schemes."""

    scheme: str

    def each(self, *tabs: str) -> list[tuple[str, Image.Image]]:
        return [(self.scheme, pictures()[tab, self.scheme]) for tab in tabs or TABS]

    def assert_colour(self, found: Colour, expected: Colour, slack: int = 1) -> None:
        self.assertTrue(all(abs(a - b) <= slack for a, b in zip(found, expected, strict=True)),
                        f"{found} is not {expected}")

    def test_a_picture_is_340_points_wide_with_two_pixels_a_point(self):
        heights = set()
        for _, picture in self.each():
            self.assertEqual(picture.width, 680)
            self.assertEqual(picture.height % 2, 0)
            heights.add(picture.height)
        self.assertEqual(len(heights), 1, "the height is that of either tab")

    def test_the_background_is_the_exact_grey_all_around(self):
        for scheme, picture in self.each():
            margin = 13
            width, height = picture.width // 2, picture.height // 2
            for box in ((0, 0, width, margin), (0, height - margin, width, height), (0, 0, margin, height),
                        (width - margin, 0, width, height)):
                colours = picture.crop(tuple(2 * side for side in box)).getcolors()
                self.assertEqual([colour for _, colour in colours], [BACKGROUND[scheme]])

    def test_the_glyph_runs_from_the_lighter_blue_down_to_the_darker(self):
        x, y, side = GLYPH
        for _, picture in self.each():
            self.assert_colour(at(picture, x + side / 2, y + 0.5), (92, 158, 255), slack=3)
            self.assert_colour(at(picture, x + side / 2, y + side - 1), (41, 97, 245), slack=3)
            # The same all the way across.
            self.assert_colour(at(picture, x + 3, y + side / 2), at(picture, x + side - 3, y + side / 2))
            # The symbol on it is white.
            middle = row(picture, y + side / 2)[2 * x:2 * (x + side)]
            self.assertIn((255, 255, 255), middle)

    def test_the_status_dot_is_green_and_seven_points_wide(self):
        for scheme, picture in self.each():
            widths = []
            for y in range(60, 108):
                line = [picture.getpixel((x, y)) for x in range(2 * 60, 2 * 80)]
                widths += [end - start for start, end in runs(line, GREEN[scheme])]
            self.assertTrue(widths, "there is no dot")
            # Its edges are blended with the background.
            self.assertAlmostEqual(max(widths), 7, delta=1)

    def test_the_master_switch_is_on_in_the_accent(self):
        for scheme, picture in self.each():
            x, y = RIGHT - 32, GLYPH[1] + GLYPH[2] / 2
            self.assert_colour(at(picture, x + 8, y), ACCENT[scheme], slack=0)
            self.assert_colour(at(picture, RIGHT - 9, y), (255, 255, 255), slack=0)
            track = runs(column(picture, x + 12, 14, 54), ACCENT[scheme])
            self.assertEqual(track, [(y - 14 - 9, y - 14 + 9)])

    def test_the_switch_at_login_is_off_at_15_percent_of_the_text_colour(self):
        for scheme, picture in self.each():
            x, y = RIGHT - 10 - 26, LOGIN_TOP + LOGIN_HEIGHT / 2
            off = mixed(CARD[scheme], PRIMARY[scheme], 0.15)
            self.assert_colour(at(picture, x + 20, y), off)
            self.assert_colour(at(picture, x + 7, y), (255, 255, 255), slack=0)
            self.assertEqual([end - start for start, end in runs(column(picture, x + 14.5, LOGIN_TOP, 401), off, slack=1)],
                             [15])

    def test_a_card_has_its_colour_and_a_hairline_of_a_point(self):
        for scheme, picture in self.each():
            middle = LOGIN_TOP + LOGIN_HEIGHT / 2
            line = row(picture, middle)
            hairline = mixed(CARD[scheme], *HAIRLINE[scheme])
            self.assertEqual(runs(line[:40], BACKGROUND[scheme]), [(0, LEFT)])
            self.assertEqual(runs(line[:40], hairline, slack=1), [(LEFT, LEFT + 1)])
            self.assert_colour(at(picture, LEFT + 3, middle), CARD[scheme], slack=0)
            self.assertEqual(runs(line[-40:], hairline, slack=1), [(20 - 14 - 1, 20 - 14)])

    def test_the_card_of_the_tab_is_245_points_high(self):
        for scheme, picture in self.each():
            line = column(picture, 150, TABS_BOTTOM + 2, LOGIN_TOP + 5)
            around = [(start + TABS_BOTTOM + 2, end + TABS_BOTTOM + 2)
                      for start, end in runs(line, BACKGROUND[scheme])]
            self.assertEqual(around, [(TABS_BOTTOM + 2, CARD_TOP), (CARD_TOP + CARD_HEIGHT, LOGIN_TOP)])

    def test_rows_are_40_points_apart_with_dividers_from_40_points_on(self):
        for scheme, picture in self.each("shortcuts"):
            divider = mixed(CARD[scheme], *DIVIDER[scheme])
            # Between the titles and the keys there is nothing else.
            found = runs(column(picture, 215, CARD_TOP + 5, CARD_TOP + CARD_HEIGHT - 5), divider, slack=1)
            tops = [start + 5 for start, _ in found]
            self.assertEqual(tops, [number * ROW_HEIGHT + number - 1 for number in range(1, 6)])
            self.assertEqual({end - start for start, end in found}, {1})
            for top in tops:
                across = runs(row(picture, CARD_TOP + top)[2 * LEFT + 2:2 * RIGHT - 2], divider, slack=1)
                self.assertEqual(across, [(40 - 1, RIGHT - LEFT - 2)])

    def test_every_row_has_its_icon_in_the_accent_with_a_white_symbol(self):
        for scheme, picture in self.each("shortcuts"):
            for number in range(6):
                middle = CARD_TOP + number * (ROW_HEIGHT + 1) + ROW_HEIGHT / 2
                icon = picture.crop((2 * (LEFT + 10), round(2 * middle - 20), 2 * (LEFT + 30), round(2 * middle + 20)))
                colours = icon.getcolors(maxcolors=icon.width * icon.height)
                whites = sum(count for count, colour in colours if min(colour) > 240)
                self.assertGreater(whites, 40, f"no symbol in row {number}")
                self.assert_colour(icon.getpixel((20, 39)), ACCENT[scheme], slack=4)

    def test_the_selected_tab_lies_on_a_plate(self):
        plate = {"light": (255, 255, 255), "dark": (95, 95, 99)}
        places = {"shortcuts": 30, "apps": 310}
        middle = (TABS_TOP + TABS_BOTTOM) / 2
        for tab in TABS:
            for scheme, picture in self.each(tab):
                on_plate = [other for other, x in places.items() if at(picture, x, middle) == plate[scheme]]
                self.assertEqual(on_plate, [tab])
                line = column(picture, places[tab], TABS_TOP, TABS_BOTTOM)
                self.assertEqual([end - start for start, end in runs(line, plate[scheme])], [24])

    def test_the_rows_of_the_rules_end_ten_points_from_the_edge(self):
        for scheme, picture in self.each("apps"):
            # The area outside contains only the mark of a scrollable list.
            left, right = RIGHT - 30, RIGHT - 7
            ends = picture.crop((2 * left, 2 * 170, 2 * right, 2 * 315))
            inked = [x for x in range(ends.width)
                     if any(max(abs(a - b) for a, b in zip(ends.getpixel((x, y)), CARD[scheme])) > 8
                            for y in range(ends.height))]
            self.assertIn(RIGHT - left - (inked[-1] + 1) / 2, (10, 10.5))

    def test_the_rules_have_an_icon_each(self):
        for scheme, picture in self.each("apps"):
            # The complete rows, from below the texts to above the button.
            icons = picture.crop((2 * (LEFT + 10), 2 * 170, 2 * (LEFT + 30), 2 * 315))
            coloured = [any(max(colour) - min(colour) > 60 for _, colour in icons.crop((0, y, 40, y + 1)).getcolors(40))
                        for y in range(icons.height)]
            starts = sum(1 for before, now in zip([False, *coloured], coloured) if now and not before)
            self.assertGreaterEqual(starts, 4)


class LightContent(Content, unittest.TestCase):
    scheme = "light"


class DarkContent(Content, unittest.TestCase):
    scheme = "dark"


if __name__ == "__main__":
    unittest.main()
