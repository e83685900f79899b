"""How much two pictures differ to the eye.

Fonts and curves come out a little different with every version of what draws them: edges are a shade darker or lighter,
a letter begins a fraction of a pixel further on. Nobody sees that. What one sees is that something is missing, has moved
or has another colour. So the pictures are compared as from a step back, in patches instead of pixels, and in a colour
space where distances are about what the eye makes of them (CIE 1976 L*a*b*). They are compared twice: in small patches,
for shapes, and in large ones, in which edges do not count any more, for colours. What counts is the worst place, because
a fault in a small place is a fault.
"""

import functools
from dataclasses import dataclass

from PIL import Image


@dataclass(frozen=True)
class Scale:
    """One way to look: sizes in pixels of the picture, two of which are a point."""

    patch: int
    tile: int
    # The mean distance over a tile from which on it counts. likeness_test.py shows what is on either side.
    limit: float


SCALES = (Scale(patch=4, tile=16, limit=6), Scale(patch=40, tile=40, limit=1.6))


@dataclass(frozen=True)
class Difference:
    """The worst tile: how far apart, in limits, and where its top-left corner is, in pixels."""

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
    """How far apart the patches are, row by row."""
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
    """Pictures of different sizes are as different as can be."""
    if one.size != other.size:
        return Difference(float("inf"))
    worst = Difference()
    for scale in SCALES:
        distances = _distances(one, other, scale.patch)
        side = scale.tile // scale.patch
        step = max(1, side // 2)
        for top in range(0, len(distances), step):
            for left in range(0, len(distances[0]), step):
                # At the edges a tile is cut off; what is missing counts as alike.
                tile = [distance for row in distances[top:top + side] for distance in row[left:left + side]]
                ratio = sum(tile) / side ** 2 / scale.limit
                if ratio > worst.ratio:
                    worst = Difference(ratio, left * scale.patch, top * scale.patch)
    return worst
