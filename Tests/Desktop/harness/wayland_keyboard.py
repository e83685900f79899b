"""A person's keyboard on a Wayland compositor with virtual keyboards (virtual-keyboard-unstable-v1).

Keys are named by their position and have the usual key codes, so that the compositor treats them as those of a real
keyboard; tools that type texts make key codes up. This file implements the wire format itself (The Wayland Protocol,
"Wire Format"), because it needs only half a dozen messages.
"""

import array
import os
import socket
import struct
import time

from .keyboard import PLACES, SHORTCUTS

# X key codes are those of the kernel plus eight.
OFFSET = 8

# Bits of a keymap's real modifiers, and the keys that hold or toggle them.
HELD = {"Shift": 1, "Control": 4, "Alt": 8, "Super": 64}
LOCKED = {"CapsLock": 2, "NumLock": 16}

DISPLAY = 1


def keymap(layout: str) -> str:
    return (
        'xkb_keymap { xkb_keycodes { include "evdev+aliases(qwerty)" }; xkb_types { include "complete" };'
        f' xkb_compatibility {{ include "complete" }}; xkb_symbols {{ include "pc+{layout}+inet(evdev)" }}; }};'
    )


class WaylandKeyboard:
    def __init__(self, socket_path: str, layout: str = "us"):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(5)
        self.socket.connect(socket_path)
        self.unread = b""
        self.last_object = DISPLAY
        self.held = 0
        self.locked = 0
        self.globals: dict[str, int] = {}
        self.registry = self._new_object()
        self._send(DISPLAY, 1, struct.pack("=I", self.registry))
        self.delivered()
        seat = self._bind("wl_seat")
        manager = self._bind("zwp_virtual_keyboard_manager_v1")
        self.keyboard = self._new_object()
        self._send(manager, 0, struct.pack("=II", seat, self.keyboard))
        self.use(layout)

    def use(self, layout: str) -> None:
        """Gives the keys their symbols in this layout."""
        text = keymap(layout).encode() + b"\0"
        file = os.memfd_create("keymap")
        os.write(file, text)
        self._send(self.keyboard, 0, struct.pack("=II", 1, len(text)), file)
        os.close(file)
        self._send_modifiers()
        self.delivered()

    def close(self) -> None:
        self.socket.close()

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
        callback = self._new_object()
        self._send(DISPLAY, 0, struct.pack("=I", callback))
        while not self._read_until(callback):
            pass

    def _key(self, key: str, state: int) -> None:
        now = time.monotonic_ns() // 1_000_000 & 0xFFFFFFFF
        self._send(self.keyboard, 1, struct.pack("=III", now, PLACES[key] - OFFSET, state))
        if key in HELD:
            self.held = self.held | HELD[key] if state else self.held & ~HELD[key]
            self._send_modifiers()

    def _send_modifiers(self) -> None:
        self._send(self.keyboard, 2, struct.pack("=IIII", self.held, 0, self.locked, 0))

    def _new_object(self) -> int:
        self.last_object += 1
        return self.last_object

    def _bind(self, interface: str) -> int:
        assert interface in self.globals, f"the compositor has no {interface}"
        name = interface.encode() + b"\0"
        number = self._new_object()
        padded = name + b"\0" * (-len(name) % 4)
        arguments = struct.pack("=II", self.globals[interface], len(name)) + padded + struct.pack("=II", 1, number)
        self._send(self.registry, 0, arguments)
        return number

    def _send(self, receiver: int, operation: int, arguments: bytes, file: int | None = None) -> None:
        message = struct.pack("=II", receiver, (len(arguments) + 8) << 16 | operation) + arguments
        rights = [] if file is None else [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [file]))]
        self.socket.sendmsg([message], rights)

    def _read_until(self, callback: int) -> bool:
        """Reads one message. Returns whether it is the awaited reply."""
        while len(self.unread) < 8 or len(self.unread) < self._length():
            received = self.socket.recv(65536)
            assert received, "the compositor has closed the connection"
            self.unread += received
        sender, word = struct.unpack_from("=II", self.unread)
        arguments, self.unread = self.unread[8:self._length()], self.unread[self._length():]
        operation = word & 0xFFFF
        assert (sender, operation) != (DISPLAY, 0), f"the compositor refuses: {arguments[12:]!r}"
        if (sender, operation) == (self.registry, 0):
            name, length = struct.unpack_from("=II", arguments)
            self.globals[arguments[8:8 + length - 1].decode()] = name
        return sender == callback

    def _length(self) -> int:
        return struct.unpack_from("=I", self.unread, 4)[0] >> 16
