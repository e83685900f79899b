"""A measure of how much two pictures differ to the eye.

Fonts and curves differ a little with every version of the libraries that draw them: edges are a shade darker or
lighter, a letter begins a fraction of a pixel further on. A person does not see that. A person sees that something is
missing, has moved or has another colour. So the pictures are compared as from a step back, in patches instead of
pixels, and in a colour space whose distances match the eye's (CIE 1976 L*a*b*). They are compared twice: in small
patches, for shapes, and in large ones, in which edges no longer matter, for colours. The result is the worst place,
because a fault in a small place is a fault.
"""

import functools
from dataclasses import dataclass

from PIL import Image


@dataclass(frozen=True)
class Scale:
    """One way of comparison: sizes in pixels of the picture, two of which are a point."""

    patch: int
    tile: int
    # The limit for the mean distance over a tile. likeness_test.py has examples on both sides.
    limit: float


SCALES = (Scale(patch=4, tile=16, limit=6), Scale(patch=40, tile=40, limit=1.6))


@dataclass(frozen=True)
class Difference:
    """The worst tile: its distance in units of the limit, and its top-left corner in pixels."""

    ratio: float = 0
    x: int = 0
    y: int = 0

    @property
    def is_visible(self) -> bool:
        return self.ratio > 1

    def __str__(self) -> str:
        return f"{self.ratio:.2f} of what would be visible, at ({self.x}, {self.y})"


@functools.lru_cache(maxsize=1 << 16)
def lab(colour: tuple[int, int, int]) -> tuple[float, float, float]:
    """An sRGB colour (IEC 61966-2-1) in the space of CIE 015, seen in daylight (D65)."""
    red, green, blue = (c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in (v / 255 for v in colour))
    x = (0.4124 * red + 0.3576 * green + 0.1805 * blue) / 0.9505
    y = 0.2126 * red + 0.7152 * green + 0.0722 * blue
    z = (0.0193 * red + 0.1192 * green + 0.9505 * blue) / 1.0890
    x, y, z = (t ** (1 / 3) if t > (6 / 29) ** 3 else t / (3 * (6 / 29) ** 2) + 4 / 29 for t in (x, y, z))
    return 116 * y - 16, 500 * (x - y), 200 * (y - z)


def _distances(one: Image.Image, other: Image.Image, patch: int) -> list[list[float]]:
    """The distances of the patches, row by row."""
    small, small_other = (picture.convert("RGB").reduce(patch) for picture in (one, other))
    distances = []
    for colour, other_colour in zip(small.getdata(), small_other.getdata(), strict=True):
        if colour == other_colour:
            distances.append(0.0)
        else:
            pairs = zip(lab(colour), lab(other_colour), strict=True)
            distances.append(sum((a - b) ** 2 for a, b in pairs) ** 0.5)
    return [distances[row * small.width:(row + 1) * small.width] for row in range(small.height)]


def difference(one: Image.Image, other: Image.Image) -> Difference:
    """Pictures of different sizes get the largest possible difference."""
    if one.size != other.size:
        return Difference(float("inf"))
    worst = Difference()
    for scale in SCALES:
        distances = _distances(one, other, scale.patch)
        side = scale.tile // scale.patch
        step = max(1, side // 2)
        for top in range(0, len(distances), step):
            for left in range(0, len(distances[0]), step):
                # At the edges a tile is cut off; the missing part counts as equal.
                tile = [distance for row in distances[top:top + side] for distance in row[left:left + side]]
                ratio = sum(tile) / side ** 2 / scale.limit
                if ratio > worst.ratio:
                    worst = Difference(ratio, left * scale.patch, top * scale.patch)
    return worst
