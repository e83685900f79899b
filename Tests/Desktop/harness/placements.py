"""The final frame of a window after a request for a named place, computed in whole numbers from the written rules.

The visible frame V is the monitor without panels and bars. It is cut at half its width and height, rounded down, and at
the thirds of its width, rounded to the nearest; a part reaches from cut to cut, and the parts cover V. A window that
settles on a size more than 2 away from the requested one keeps to the edges of V that the part reaches, and is centred
between those that it reaches both or none of; its top stays inside V. On another monitor each edge of the window has
the same share of V, rounded to the nearest; a window that keeps its own size has the same share of the space that it
leaves free in V.
"""

import math
from fractions import Fraction

from .oracle import Size, nearest
from .rect import Rect

# The edges of V that each part reaches: left and right, top and bottom.
PARTS = {
    "top-half": ("both", "start"), "bottom-half": ("both", "end"),
    "top-left": ("start", "start"), "top-right": ("end", "start"),
    "bottom-left": ("start", "end"), "bottom-right": ("end", "end"),
    "first-third": ("start", "both"), "center-third": ("none", "both"), "last-third": ("end", "both"),
    "first-two-thirds": ("start", "both"), "last-two-thirds": ("end", "both"),
}


def part(name: str, visible: Rect) -> Rect:
    """The frame that the part requests."""
    half_width, half_height = visible.width // 2, visible.height // 2
    third, two_thirds = (2 * visible.width + 3) // 6, (4 * visible.width + 3) // 6
    left, right = {
        "top-left": (0, half_width), "bottom-left": (0, half_width),
        "top-right": (half_width, visible.width), "bottom-right": (half_width, visible.width),
        "first-third": (0, third), "center-third": (third, two_thirds), "last-third": (two_thirds, visible.width),
        "first-two-thirds": (0, two_thirds), "last-two-thirds": (third, visible.width),
    }.get(name, (0, visible.width))
    top, bottom = {"start": (0, half_height), "end": (half_height, visible.height)}.get(
        PARTS[name][1], (0, visible.height)
    )
    return Rect(visible.x + left, visible.y + top, right - left, bottom - top)


def is_taken(size: Size, asked: Rect) -> bool:
    return abs(size[0] - asked.width) <= 2 and abs(size[1] - asked.height) <= 2


def placed(name: str, before: Rect, visible: Rect, settles_on) -> Rect:
    """The final frame of the window. `settles_on` returns the size that it takes for a requested one."""
    asked = part(name, visible)
    size = before.size if asked.size == before.size else settles_on(asked.size)
    if is_taken(size, asked):
        return Rect(asked.x, asked.y, *size)

    def along(reached: str, start: int, length: int, own: int) -> int:
        match reached:
            case "start":
                return start
            case "end":
                return start + length - own
        return nearest(start + (length - min(own, length)) / 2)

    x = along(PARTS[name][0], visible.x, visible.width, size[0])
    y = max(visible.y, along(PARTS[name][1], visible.y, visible.height, size[1]))
    return Rect(x, y, *size)


def elsewhere(window: Rect, here: Rect, there: Rect, settles_on) -> Rect:
    """The final frame, on the monitor of `there`, of a window that is inside the visible frame `here`."""

    def rounded(number: Fraction) -> int:
        return math.floor(number + Fraction(1, 2))

    def edges(start: int, length: int, from_start: int, from_length: int, to_length: int) -> tuple[int, int]:
        return tuple(
            rounded(Fraction(edge - from_start, from_length) * to_length) for edge in (start, start + length)
        )

    left, right = edges(window.x, window.width, here.x, here.width, there.width)
    top, bottom = edges(window.y, window.height, here.y, here.height, there.height)
    asked = Rect(there.x + left, there.y + top, right - left, bottom - top)
    size = window.size if asked.size == window.size else settles_on(asked.size)
    if is_taken(size, asked):
        return Rect(asked.x, asked.y, *size)

    def along(start: int, own: int, here_start: int, here_length: int, free: int) -> int:
        space = here_length - own
        return rounded(Fraction(start - here_start, space) * free) if space else rounded(Fraction(free, 2))

    x = along(window.x, window.width, here.x, here.width, there.width - size[0])
    y = along(window.y, window.height, here.y, here.height, there.height - size[1])
    return Rect(there.x + x, there.y + y, *size)
