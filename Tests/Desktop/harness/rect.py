"""A rectangle of the screen in pixels, origin at the top left, y growing downwards."""

from typing import NamedTuple


class Rect(NamedTuple):
    x: int
    y: int
    width: int
    height: int

    @property
    def size(self) -> tuple[int, int]:
        return (self.width, self.height)

    def grown(self, left: int, right: int, top: int, bottom: int) -> "Rect":
        """The rectangle extended by that much on each side; negative numbers shrink it."""
        return Rect(self.x - left, self.y - top, self.width + left + right, self.height + top + bottom)

    def within(self, other: "Rect") -> "Rect":
        """The intersection of both, at least one pixel of the other rectangle."""
        x, y = (max(outer, min(inner, outer + length - 1))
                for inner, outer, length in zip(self[:2], other[:2], other.size))
        right = min(self.x + self.width, other.x + other.width)
        bottom = min(self.y + self.height, other.y + other.height)
        return Rect(x, y, max(right - x, 1), max(bottom - y, 1))

    def is_near(self, other: "Rect", leeway: int) -> bool:
        return all(abs(one - another) <= leeway for one, another in zip(self, other))

    def __str__(self) -> str:
        return f"{self.width}x{self.height}{self.x:+d}{self.y:+d}"
