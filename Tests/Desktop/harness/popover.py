"""The program's window at the panel: how its user finds, opens, reads and uses it."""

from Xlib import X, error

from .picture import screen
from .rect import Rect
from .tray import call
from .waiting import PATIENCE, until

# In points. The shadow lies around the plate, in the transparent part of the window.
WIDTH, SHADOW = 340, 20
# A smaller distance to the panel would look like contact.
GAP = 6
# Inside the plate, at a place with nothing but its background: below the rounded corner, left of all contents.
BACKGROUND_AT = (7, 30)
LIGHT, DARK = (0xED, 0xED, 0xED), (0x29, 0x29, 0x29)


class Popover:
    """The window manager does not know this window, so it is searched among all windows of the screen."""

    def __init__(self, desktop, product, scale: float = 1.0):
        self.desktop = desktop
        self.product = product
        self.scale = scale

    # Position

    def window(self) -> Rect | None:
        """The window with its shadow, or None while it is not shown."""
        windows = self.desktop.windows
        for child in windows.root.query_tree().children:
            try:
                attributes = child.get_attributes()
                if attributes.map_state != X.IsViewable or not attributes.override_redirect:
                    continue
                geometry = child.get_geometry()
                if geometry.width >= WIDTH and windows.process_of(child.id) == self.product.process.pid:
                    return Rect(geometry.x, geometry.y, geometry.width, geometry.height)
            except (error.BadWindow, error.BadDrawable):
                continue
        return None

    def frame(self) -> Rect | None:
        """The visible part, without the shadow."""
        window = self.window()
        if window is None:
            return None
        shadow = round(SHADOW * self.scale) if self.desktop.windows.composited() else 0
        return window.grown(-shadow, -shadow, -shadow, -shadow)

    def is_open(self) -> bool:
        return self.window() is not None

    def until_open(self, seconds: float = PATIENCE, when: str = "") -> Rect:
        """Its frame, once it is shown, focused and drawn."""
        until(self.frame, f"the popover to open{when}", seconds, self.product.errors)
        until(self.has_keyboard, f"the popover to have the keyboard{when}", seconds)
        self.until_drawn(seconds)
        return self.frame()

    def until_closed(self, seconds: float = PATIENCE, when: str = "") -> None:
        until(lambda: not self.is_open(), f"the popover to close{when}", seconds)

    def has_keyboard(self) -> bool:
        focused = self.desktop.windows.connection.get_input_focus().focus
        return not isinstance(focused, int) and self.desktop.windows.process_of(focused.id) == self.product.process.pid

    # Contents

    def picture(self):
        frame = self.frame()
        assert frame, "the popover is not open"
        return self._picture_of(frame)

    def _picture_of(self, frame: Rect):
        return screen(self.desktop.server.display, frame)

    def background(self, picture=None) -> tuple[int, int, int]:
        """The pixels now, or those of an earlier picture."""
        return (picture or self.picture()).getpixel(tuple(round(place * self.scale) for place in BACKGROUND_AT))

    def until_background(self, colour: tuple[int, int, int], seconds: float = PATIENCE) -> None:
        until(lambda: self.background() == colour, f"the background {colour}", seconds, self.background)

    def is_drawn(self) -> bool:
        """Opaque, and not empty."""
        frame = self.frame()
        if frame is None:
            return False
        picture = self._picture_of(frame)
        return self.background(picture) in (LIGHT, DARK) and len(picture.getcolors(1 << 20)) > 50

    def until_drawn(self, seconds: float = PATIENCE) -> None:
        until(self.is_drawn, "the popover to be drawn", seconds, lambda: self.is_open() and self.background())

    # Opening and use

    def ask_to_open(self) -> None:
        """Opens it by a request over the bus."""
        answer = call(self.desktop, "org.corvid.Tessel", "/org/corvid/Tessel", "org.corvid.Tessel1.Open")
        assert answer == "()", f"asked to open, it answered {answer!r}"

    def close(self) -> None:
        """Closes it with Escape, and waits until the window manager knows that the focus has moved: a window manager
        that has not handled that yet may take the focus from the next window."""
        self.desktop.keyboard.chord("Escape")
        self.until_closed()
        until(lambda: not self.has_keyboard(), "the keyboard to be given back")
        self.desktop.windows.fence()
        self.product.until_at_rest()

    def type(self, *keys: str) -> None:
        """Presses keys one after the other and waits until the program has handled them."""
        for key in keys:
            self.desktop.keyboard.chord(*key.split("+"))
        self.product.until_at_rest()
