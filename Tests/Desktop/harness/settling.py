"""The size that a window takes for a requested one, by the rules of the window and its window manager."""

from typing import Callable

from Xlib import Xutil

from .applications import Application
from .window_managers import WindowManager
from .windows import Windows


def settles_on(
    windows: Windows, window: int, application: Application, manager: WindowManager
) -> Callable[[tuple[int, int]], tuple[int, int]]:
    """Maps a requested frame size to the resulting one, for the window with its present decoration."""
    frame = windows.frame(window)
    if application.fixed_size and manager.honours_limits:
        return lambda _: frame.size
    if application.has_increments and manager.honours_increments:
        client = windows.client_rect(window)
        around = (frame.width - client.width, frame.height - client.height)
        hints = windows.size_hints(window)
        assert hints.flags & Xutil.PResizeInc, "the application counts no rows and columns"
        base = (hints.base_width, hints.base_height)
        step = (hints.width_inc, hints.height_inc)
        assert step != (1, 1), "the application's rows and columns are pixels"

        def rounded_down(asked: tuple[int, int]) -> tuple[int, int]:
            return tuple(
                outside + base_size + (size - outside - base_size) // increment * increment
                for size, outside, base_size, increment in zip(asked, around, base, step)
            )

        return rounded_down
    return lambda asked: asked
