"""Where a window must end, worked out by hand from the written rules and nothing else.

The visible frame V is the monitor without panels and bars. The rules, with w and h for width and height:

  leftHalf         V.x, V.y, half V.w, V.h                  half is rounded down
  rightHalf        flush right, V.y, half V.w, V.h
  center           own size but not above V's, centred      centres are rounded to the nearest, halves away from zero
  maximize         V
  almostMaximize   90 % of V, each rounded to the nearest, centred
  maximizeHeight   own width but not above V's, own x but not left of V and then not right of it, V.y, V.h

A window that settles on a size more than 2 away from the requested one is moved once more: flush left or right for the
halves and centred vertically, centred in both directions for all others.
"""

import math
from typing import Callable

from .rect import Rect

ACTIONS = ("leftHalf", "rightHalf", "center", "maximize", "almostMaximize", "maximizeHeight")


def nearest(value: float) -> int:
    return int(math.copysign(math.floor(abs(value) + 0.5), value))


def centred(size: tuple[int, int], visible: Rect) -> Rect:
    width, height = min(size[0], visible.width), min(size[1], visible.height)
    x = nearest(visible.x + visible.width / 2 - width / 2)
    y = nearest(visible.y + visible.height / 2 - height / 2)
    return Rect(x, y, width, height)


def target(action: str, window: Rect, visible: Rect) -> Rect:
    """The frame that the action requests."""
    half = visible.width // 2
    right = visible.x + visible.width
    match action:
        case "leftHalf":
            return Rect(visible.x, visible.y, half, visible.height)
        case "rightHalf":
            return Rect(right - half, visible.y, half, visible.height)
        case "center":
            return centred(window.size, visible)
        case "maximize":
            return visible
        case "almostMaximize":
            return centred((nearest(visible.width * 0.9), nearest(visible.height * 0.9)), visible)
        case "maximizeHeight":
            width = min(window.width, visible.width)
            x = max(window.x, visible.x)
            return Rect(min(x, right - width), visible.y, width, visible.height)
    raise ValueError(action)


def corrected(action: str, size: tuple[int, int], asked: Rect, visible: Rect) -> Rect:
    """The final frame of a window that took `size` after a request for `asked`."""
    if abs(size[0] - asked.width) <= 2 and abs(size[1] - asked.height) <= 2:
        return Rect(asked.x, asked.y, *size)
    middle = centred(size, visible)
    match action:
        case "leftHalf":
            return Rect(visible.x, middle.y, *size)
        case "rightHalf":
            return Rect(visible.x + visible.width - size[0], middle.y, *size)
    return Rect(middle.x, middle.y, *size)


Size = tuple[int, int]


def expected(action: str, window: Rect, visible: Rect, settles_on: Callable[[Size], Size]) -> Rect:
    """The final frame of the window. `settles_on` returns the frame size that the window takes for a requested one."""
    asked = target(action, window, visible)
    if asked.size == window.size:
        return asked
    return corrected(action, settles_on(asked.size), asked, visible)
