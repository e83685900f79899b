#!/usr/bin/python3
"""The comparison of pictures finds each difference that a person sees, and nothing else: each case plants a change."""

import unittest
from pathlib import Path

from PIL import Image, ImageChops, ImageDraw, ImageFilter

from likeness import difference

GOLDEN = Path(__file__).with_name("golden")
# A row of the shortcuts, without the edges of its card, and the positions of some parts in it and elsewhere, in pixels.
ROW = (60, 300, 640, 372)
TEXTS = (100, 200, 420, 700)
CAP = (508, 240, 530, 260)
EYE = (118, 928, 146, 950)
DOT = (124, 78, 146, 98)
SWITCH = (588, 50, 652, 86)


def moved(picture: Image.Image, box: tuple[int, int, int, int], across: int, down: int) -> Image.Image:
    changed = picture.copy()
    changed.paste(picture.crop(box), (box[0] + across, box[1] + down))
    return changed


def without(picture: Image.Image, box: tuple[int, int, int, int]) -> Image.Image:
    """Removes the contents of the box, so that only the background remains."""
    changed = picture.copy()
    ImageDraw.Draw(changed).rectangle(box, fill=picture.getpixel(box[:2]))
    return changed


def recoloured(picture: Image.Image, box: tuple[int, int, int, int], order: tuple[int, int, int]) -> Image.Image:
    """The box with its red, green and blue exchanged."""
    channels = picture.crop(box).split()
    changed = picture.copy()
    changed.paste(Image.merge("RGB", [channels[index] for index in order]), box[:2])
    return changed


class Likeness(unittest.TestCase):
    def setUp(self) -> None:
        self.pictures = [Image.open(GOLDEN / f"menu-en-shortcuts-{scheme}.png").convert("RGB")
                         for scheme in ("light", "dark")]

    def assert_seen(self, change) -> None:
        for picture in self.pictures:
            changed = change(picture)
            self.assertIsNotNone(ImageChops.difference(picture, changed).getbbox(), "nothing was planted")
            found = difference(picture, changed)
            self.assertTrue(found.is_visible, found)

    def assert_not_seen(self, change) -> None:
        for picture in self.pictures:
            changed = change(picture)
            self.assertIsNotNone(ImageChops.difference(picture, changed).getbbox(), "nothing was planted")
            found = difference(picture, changed)
            self.assertFalse(found.is_visible, found)

    def test_a_picture_is_like_itself(self):
        for picture in self.pictures:
            self.assertEqual(difference(picture, picture.copy()).ratio, 0)

    def test_a_row_that_has_moved_is_seen(self):
        for across, down in ((0, 1), (0, -1), (1, 0), (-2, 0), (0, 2), (3, 3)):
            self.assert_seen(lambda picture, by=(across, down): moved(picture, ROW, *by))

    def test_everything_moved_by_half_a_point_is_seen(self):
        self.assert_seen(lambda picture: ImageChops.offset(picture, 0, 1))

    def test_a_symbol_that_is_missing_is_seen(self):
        for box in (EYE, DOT, SWITCH):
            self.assert_seen(lambda picture, box=box: without(picture, box))

    def test_the_smallest_sign_on_a_key_that_is_missing_is_seen(self):
        self.assert_seen(lambda picture: without(picture, CAP))

    def test_a_wrong_colour_is_seen(self):
        for box in (EYE, DOT, SWITCH):
            self.assert_seen(lambda picture, box=box: recoloured(picture, box, (2, 0, 1)))

    def test_a_background_of_another_grey_is_seen(self):
        self.assert_seen(lambda picture: Image.eval(picture, lambda value: max(0, value - 6)))

    def test_another_size_is_seen(self):
        for picture in self.pictures:
            cut = picture.crop((0, 0, picture.width, picture.height - 2))
            self.assertTrue(difference(picture, cut).is_visible)
            self.assertTrue(difference(cut, picture).is_visible)

    def test_edges_that_are_a_little_softer_are_not_seen(self):
        self.assert_not_seen(lambda picture: picture.filter(ImageFilter.GaussianBlur(0.5)))

    def test_edges_that_are_a_little_harder_are_not_seen(self):
        self.assert_not_seen(lambda picture: picture.filter(ImageFilter.UnsharpMask(0.6, 40, 0)))

    def test_text_that_begins_a_quarter_of_a_pixel_further_on_is_not_seen(self):
        def change(picture: Image.Image) -> Image.Image:
            texts = picture.crop(TEXTS)
            changed = picture.copy()
            shifted = texts.transform(texts.size, Image.Transform.AFFINE, (1, 0, 0.25, 0, 1, 0),
                                      Image.Resampling.BILINEAR)
            # The transformed picture ends before its last column.
            changed.paste(shifted.crop((0, 0, texts.width - 1, texts.height)), TEXTS[:2])
            return changed

        self.assert_not_seen(change)

    def test_a_rounding_of_colours_is_not_seen(self):
        self.assert_not_seen(lambda picture: Image.eval(picture, lambda value: value ^ 1))


if __name__ == "__main__":
    unittest.main()
