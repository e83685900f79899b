"""A person's keyboard on a Wayland compositor with virtual keyboards (virtual-keyboard-unstable-v1).

Keys are named by their position and have the usual key codes, so that the compositor treats them as those of a real
keyboard; tools that type texts make key codes up.
"""

import os
import struct
import time

from .keyboard import PLACES, SHORTCUTS
from .wayland_wire import WaylandConnection

# X key codes are those of the kernel plus eight.
OFFSET = 8

# Bits of a keymap's real modifiers, and the keys that hold or toggle them.
HELD = {"Shift": 1, "Control": 4, "Alt": 8, "Super": 64}
LOCKED = {"CapsLock": 2, "NumLock": 16}


def keymap(layout: str) -> str:
    return (
        'xkb_keymap { xkb_keycodes { include "evdev+aliases(qwerty)" }; xkb_types { include "complete" };'
        f' xkb_compatibility {{ include "complete" }}; xkb_symbols {{ include "pc+{layout}+inet(evdev)" }}; }};'
    )


class WaylandKeyboard:
    def __init__(self, socket_path: str, layout: str = "us"):
        self.connection = WaylandConnection(socket_path)
        self.held = 0
        self.locked = 0
        seat = self.connection.bind("wl_seat")
        manager = self.connection.bind("zwp_virtual_keyboard_manager_v1")
        self.keyboard = self.connection.new_object()
        self.connection.send(manager, 0, struct.pack("=II", seat, self.keyboard))
        self.use(layout)

    def use(self, layout: str) -> None:
        """Gives the keys their symbols in this layout."""
        text = keymap(layout).encode() + b"\0"
        file = os.memfd_create("keymap")
        os.write(file, text)
        self.connection.send(self.keyboard, 0, struct.pack("=II", 1, len(text)), file)
        os.close(file)
        self._send_modifiers()
        self.delivered()

    def close(self) -> None:
        self.connection.close()

    def press(self, action: str) -> None:
        """Presses and releases an action's shortcut. On return, the compositor has handled the keys."""
        self.chord("Control", "Alt", SHORTCUTS[action])

    def chord(self, *keys: str) -> None:
        self.hold(*keys)
        self.release(*keys)

    def hold(self, *keys: str) -> None:
        for key in keys:
            self._key(key, 1)
        self.delivered()

    def release(self, *keys: str) -> None:
        for key in reversed(keys):
            self._key(key, 0)
        self.delivered()

    def lock(self, key: str, on: bool) -> None:
        """Switches a lock key on or off."""
        self.locked = self.locked | LOCKED[key] if on else self.locked & ~LOCKED[key]
        self._send_modifiers()
        self.delivered()

    def delivered(self) -> None:
        """Returns after the compositor has handled all messages."""
        self.connection.delivered()

    def _key(self, key: str, state: int) -> None:
        now = time.monotonic_ns() // 1_000_000 & 0xFFFFFFFF
        self.connection.send(self.keyboard, 1, struct.pack("=III", now, PLACES[key] - OFFSET, state))
        if key in HELD:
            self.held = self.held | HELD[key] if state else self.held & ~HELD[key]
            self._send_modifiers()

    def _send_modifiers(self) -> None:
        self.connection.send(self.keyboard, 2, struct.pack("=IIII", self.held, 0, self.locked, 0))
