"""A person's keyboard: the X server itself presses and releases the keys, so that every grab sees them.

Keys are named by their position on the keyboard, not by the symbol that the layout gives them.
"""

from Xlib import X, display
from Xlib.ext import xtest

# Positions of a PC keyboard as evdev keycodes.
PLACES = {
    "Control": 37,
    "Alt": 64,
    "Left": 113,
    "Right": 114,
    "Up": 111,
    "Down": 116,
    "C": 54,
    "D": 40,
    "CapsLock": 66,
    "NumLock": 77,
    "Super": 133,
    "KeypadLeft": 83,
    "Escape": 9,
    "Tab": 23,
    "Shift": 50,
    "Return": 36,
    "Space": 65,
    "A": 38,
    "E": 26,
    "M": 58,
    "N": 57,
    "O": 32,
    "P": 33,
    "Q": 24,
    "S": 39,
    "U": 30,
    "F12": 96,
}

# The last key of each action's shortcut, after Control and Alt.
SHORTCUTS = {
    "leftHalf": "Left",
    "rightHalf": "Right",
    "center": "C",
    "maximize": "Up",
    "almostMaximize": "D",
    "maximizeHeight": "Down",
}

LOCK_MASKS = {"CapsLock": X.LockMask, "NumLock": X.Mod2Mask}


class Keyboard:
    def __init__(self, name: str):
        self.connection = display.Display(name)
        assert self.connection.has_extension("XTEST"), "the server has no XTEST extension"

    def close(self) -> None:
        self.connection.close()

    def _fake(self, kind: int, key: str) -> None:
        xtest.fake_input(self.connection, kind, PLACES[key])

    def press(self, action: str) -> None:
        """Presses and releases an action's shortcut. On return, its events have reached the clients' sockets."""
        self.chord("Control", "Alt", SHORTCUTS[action])

    def chord(self, *keys: str) -> None:
        self.hold(*keys)
        self.release(*keys)

    def hold(self, *keys: str) -> None:
        for key in keys:
            self._fake(X.KeyPress, key)
        self.delivered()

    def release(self, *keys: str) -> None:
        for key in reversed(keys):
            self._fake(X.KeyRelease, key)
        self.delivered()

    def delivered(self) -> None:
        """Returns after all clients have their events: the server writes pending events before it reads further
        requests."""
        self.connection.sync()
        self.connection.sync()

    def modifiers(self) -> int:
        return self.connection.screen().root.query_pointer().mask

    def lock(self, key: str, on: bool) -> None:
        """Switches a lock key on or off by pressing it."""
        mask = LOCK_MASKS[key]
        if bool(self.modifiers() & mask) != on:
            self.chord(key)
        assert bool(self.modifiers() & mask) == on, f"{key} did not go {'on' if on else 'off'}"

    def point(self, x: int, y: int) -> None:
        xtest.fake_input(self.connection, X.MotionNotify, x=x, y=y)
        self.delivered()

    def click(self, x: int, y: int) -> None:
        self.point(x, y)
        xtest.fake_input(self.connection, X.ButtonPress, 1)
        xtest.fake_input(self.connection, X.ButtonRelease, 1)
        self.delivered()
