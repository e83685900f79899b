#!/usr/bin/python3
"""The pictures look like the reviewed ones.

scripts/golden-pictures draws those again, for a person to review and commit.
"""

import unittest
from pathlib import Path

from PIL import Image, ImageDraw

from drawing import PROGRAM, names, pictures
from likeness import difference

GOLDEN = Path(__file__).with_name("golden")
# A failure saves the picture here.
FOUND = PROGRAM.parent.parent / "pictures"


def without_version(picture: Image.Image) -> Image.Image:
    """The version differs from release to release: the right half of the last row but one."""
    covered = picture.copy()
    middle = picture.height - 2 * (14 + 26 + 13)
    ImageDraw.Draw(covered).rectangle((340, middle - 20, 680, middle + 20), fill="grey")
    return covered


class GoldenPictures(unittest.TestCase):
    def test_all_are_there_and_no_others(self):
        self.assertEqual(sorted(file.name for file in GOLDEN.iterdir()), sorted(names()))

    def test_the_interface_looks_as_it_did(self):
        for (tab, scheme), picture in pictures().items():
            name = f"menu-en-{tab}-{scheme}.png"
            with self.subTest(picture=name):
                golden = Image.open(GOLDEN / name)
                found = difference(without_version(golden.convert("RGB")), without_version(picture))
                if found.is_visible:
                    FOUND.mkdir(exist_ok=True)
                    picture.save(FOUND / name)
                self.assertFalse(found.is_visible, f"{FOUND / name} differs from {GOLDEN / name}: {found}")


if __name__ == "__main__":
    unittest.main()
