#!/usr/bin/python3
"""The interface in each of its states, also in the two artificial languages: texts twice as long, and right to left.
"""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from PIL import Image

from drawing import SCHEMES, bare_environment
from measuring import (ACCENT, CARD, CARD_HEIGHT, CARD_TOP, DIVIDER, LEFT, RIGHT, ROW_HEIGHT, at, column, mixed, row,
                       runs)

STATES = (
    "active", "rules", "no-rules", "many-rules", "no-permission", "taken-shortcuts", "reminder", "updated", "paused",
    "rule-menu", "add-menu", "shortcut-tip", "switch-tip",
)
CHOOSERS = ("chooser", "chooser-search", "chooser-nothing")
WIDTH = 340
ORANGE = {"light": (196, 102, 0), "dark": (255, 159, 10)}


def drawn(language: str) -> tuple[dict[tuple[str, str], Image.Image], str]:
    """The pictures by state and scheme, and the warnings."""
    with tempfile.TemporaryDirectory() as folder:
        environment = bare_environment(Path(folder)) | {"XDG_RUNTIME_DIR": folder}
        finished = subprocess.run([os.environ["TESSEL_STATE_PICTURES"], folder, language], env=environment,
                                  stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, timeout=240, check=True)
        pictures = {(state, scheme): Image.open(Path(folder, f"menu-{language}-{state}-{scheme}.png")).convert("RGB")
                    for state in (*STATES, *CHOOSERS) for scheme in SCHEMES}
    return pictures, finished.stderr


def has(picture: Image.Image, colour: tuple[int, int, int], box: tuple[int, int, int, int]) -> bool:
    """Whether the colour is in a box, which is given in points."""
    part = picture.crop(tuple(2 * side for side in box))
    return colour in (found for _, found in part.getcolors(part.width * part.height))


class States(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.languages = {language: drawn(language) for language in ("en", "xl", "xb")}

    def test_nothing_is_complained_of(self):
        for language, (_, complaints) in self.languages.items():
            self.assertEqual(complaints, "", language)

    def test_every_state_looks_different_and_ends_at_a_whole_point(self):
        for language, (pictures, _) in self.languages.items():
            self.assertEqual(len({picture.tobytes() for picture in pictures.values()}), len(pictures), language)
            for place, picture in pictures.items():
                if place[0] in CHOOSERS:
                    self.assertEqual(picture.size, (2 * 400, 2 * 474), (language, place))
                    continue
                self.assertEqual((picture.width, picture.height % 2), (2 * WIDTH, 0), (language, place))
                # It is painted down to its last row.
                corners = {at(picture, x, y) for x in (0, WIDTH - 1) for y in (0, picture.height / 2 - 0.5)}
                self.assertEqual(len(corners), 1, (language, place))

    def test_taken_shortcuts_are_marked_in_their_rows_and_no_others(self):
        for scheme in SCHEMES:
            for language in ("en", "xl"):
                picture = self.languages[language][0]["taken-shortcuts", scheme]
                rows = [CARD_TOP + number * (ROW_HEIGHT + 1) for number in range(6)]
                marked = [has(picture, ORANGE[scheme], (LEFT, top, RIGHT, top + ROW_HEIGHT)) for top in rows]
                self.assertEqual(marked, [True, False, False, False, True, False])

    def test_each_card_takes_its_own_room(self):
        for language, (pictures, _) in self.languages.items():
            for scheme in SCHEMES:
                usual = pictures["active", scheme].height
                self.assertEqual(pictures["taken-shortcuts", scheme].height, usual, language)
                for state in ("no-permission", "reminder"):
                    self.assertGreater(pictures[state, scheme].height, usual + 2 * 80, (language, state))
                self.assertGreater(pictures["updated", scheme].height, usual + 2 * 60, language)

    def test_from_right_to_left_everything_trades_sides(self):
        for scheme in SCHEMES:
            picture = self.languages["xb"][0]["active", scheme]
            # The program's icon is at the right, the master switch at the left with its knob to the left.
            self.assertTrue(all(abs(a - b) <= 3 for a, b in zip(at(picture, WIDTH - 34, 14.5), (92, 158, 255))))
            self.assertEqual(at(picture, LEFT + 9, 34), (255, 255, 255))
            self.assertEqual(at(picture, LEFT + 24, 34), ACCENT[scheme])
            for number in range(6):
                top = CARD_TOP + number * (ROW_HEIGHT + 1)
                icon = at(picture, RIGHT - 20, top + 29)
                self.assertTrue(all(abs(a - b) <= 8 for a, b in zip(icon, ACCENT[scheme])), f"{icon} in row {number}")
                # The first key cap begins where the card's padding ends; the space between the keys and the title is
                # empty.
                line = row(picture, top + 12)
                self.assertNotEqual(line[2 * (LEFT + 11)], CARD[scheme])
                self.assertEqual(set(line[260:300]), {CARD[scheme]})

    def test_from_right_to_left_dividers_leave_room_at_the_right(self):
        for scheme in SCHEMES:
            picture = self.languages["xb"][0]["active", scheme]
            divider = mixed(CARD[scheme], *DIVIDER[scheme])
            line = column(picture, 150, CARD_TOP + 5, CARD_TOP + CARD_HEIGHT - 5)
            tops = [start + 5 for start, _ in runs(line, divider, slack=1)]
            self.assertEqual(len(tops), 5)
            for top in tops:
                across = runs(row(picture, CARD_TOP + top)[2 * LEFT + 2:2 * RIGHT - 2], divider, slack=1)
                self.assertEqual(across, [(0, RIGHT - LEFT - 40 - 1)])


if __name__ == "__main__":
    unittest.main()
