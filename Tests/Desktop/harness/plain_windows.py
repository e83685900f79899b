"""The windows as the X server alone shows them, for window managers that announce little or nothing.

Managed windows are those with WM_STATE; the active one has the keyboard; the frame of a window is the child of the root
that contains it, with its border.
"""

import math
import time

from Xlib import X, Xutil, error

from .keyboard import Keyboard
from .rect import Rect
from .waiting import PATIENCE, until
from .windows import FROM_A_PAGER, Windows

# The windows that window managers put around a client, and one more.
DEEPEST = 5
# Each window manager honours the gravity of a window in its own way; the second request corrects the first.
PLACINGS = 6
# The time in seconds after which a window that does not get the focus is asked for again.
ACTIVATION_INTERVAL = 0.3


class PlainWindows(Windows):
    def __init__(self, name: str, keyboard: Keyboard):
        super().__init__(name)
        self.keyboard = keyboard

    def managed(self) -> list[int]:
        found: list[int] = []

        def search(window, depth: int) -> None:
            state = self.cardinals(window, "WM_STATE")
            if state:
                if state[0] != 0:
                    found.append(window.id)
                return
            if depth < DEEPEST:
                try:
                    # pekwm has hundreds of hidden menus.
                    if depth == 1 and window.get_attributes().map_state != X.IsViewable:
                        return
                    children = window.query_tree().children
                except (error.BadWindow, error.BadDrawable):
                    return
                for child in children:
                    search(child, depth + 1)

        search(self.root, 0)
        return sorted(found)

    def top(self, identifier: int):
        """The child of the root that contains the window."""
        window = self.window(identifier)
        while (parent := window.query_tree().parent) != self.root:
            window = parent
        return window

    def frame(self, identifier: int) -> Rect:
        shadow = self.extents(identifier, "_GTK_FRAME_EXTENTS")
        geometry = self.top(identifier).get_geometry()
        border = 2 * geometry.border_width
        outer = Rect(geometry.x, geometry.y, geometry.width + border, geometry.height + border)
        return outer.grown(*(-side for side in shadow))

    def active(self) -> int:
        focused = self.connection.get_input_focus().focus
        if isinstance(focused, int):
            focused = self.root.query_pointer().child if focused == X.PointerRoot else X.NONE
        if isinstance(focused, int) or focused == self.root:
            return X.NONE
        return next((window for window in self.managed() if self._is_around(window, focused)), X.NONE)

    def _is_around(self, identifier: int, focused) -> bool:
        """Whether the focused window is the client, one within it, or one around it."""
        try:
            within = focused
            while within != self.root:
                if within.id == identifier:
                    return True
                within = within.query_tree().parent
            around = self.window(identifier)
            while around != self.root:
                if around == focused:
                    return True
                around = around.query_tree().parent
        except (error.BadWindow, error.BadDrawable):
            pass
        return False

    def activate(self, identifier: int, seconds: float = PATIENCE) -> None:
        """Gives a window the keyboard as a person does: raises it, points at it, and clicks it if that is needed."""
        asked, tries = -math.inf, 0

        def is_active() -> bool:
            nonlocal asked, tries
            if self.active() == identifier:
                return True
            if time.monotonic() >= asked + ACTIVATION_INTERVAL:
                asked, tries = time.monotonic(), tries + 1
                self._ask(identifier, "_NET_ACTIVE_WINDOW", [FROM_A_PAGER, X.CurrentTime, 0])
                self.window(identifier).configure(stack_mode=X.Above)
                self.fence()
                place = self.client_rect(identifier)
                point = (place.x + place.width // 2, place.y + place.height // 2)
                self.keyboard.point(*point)
                # Elsewhere a click may open a menu.
                if tries > 1 and self.root.query_pointer().child == self.top(identifier):
                    self.keyboard.click(*point)
                self.fence()
            return False

        until(is_active, f"window {identifier:#x} to be active", seconds, self._focus_story)

    def place(self, identifier: int, frame: Rect) -> None:
        """Requests that frame until the window has its position."""
        window = self.window(identifier)
        correction = (0, 0)
        for _ in range(PLACINGS):
            outer, inner = self.frame(identifier), window.get_geometry()
            wanted = (frame.width - outer.width + inner.width, frame.height - outer.height + inner.height)
            width, height = self._within_limits(identifier, wanted)
            window.configure(x=frame.x + correction[0], y=frame.y + correction[1], width=width, height=height)
            self.fence()
            self.until_at_rest(identifier)
            now = self.frame(identifier)
            if (now.x, now.y) == (frame.x, frame.y):
                return
            correction = (correction[0] + frame.x - now.x, correction[1] + frame.y - now.y)

    def _within_limits(self, identifier: int, size: tuple[int, int]) -> tuple[int, int]:
        """The nearest size that the window's hints allow; not every window manager cares for them."""
        hints = self.size_hints(identifier)
        if hints is None:
            return size
        least = (hints.min_width, hints.min_height) if hints.flags & Xutil.PMinSize else (1, 1)
        most = (hints.max_width, hints.max_height) if hints.flags & Xutil.PMaxSize else size
        return tuple(max(low, min(wanted, high)) for wanted, low, high in zip(size, least, most))

    def until_at_rest(self, identifier: int) -> None:
        """Returns when the frame has not changed for a while; some window managers move windows after they have answered
        the fence."""
        last, since = self.frame(identifier), time.monotonic()

        def rests() -> bool:
            nonlocal last, since
            now = self.frame(identifier)
            if now != last:
                last, since = now, time.monotonic()
            return time.monotonic() - since > 0.06

        until(rests, f"window {identifier:#x} to rest")
