"""Another program with hot keys, by one of the two Wayland protocols for them.

Requests and events have the numbers of their order in the protocols' descriptions (vicinae-hotkey-v1 in Hyprland,
xx-hotkey-v1 in wayland-protocols). The numbers of the events are the same in both.
"""

import struct
from dataclasses import dataclass, field

from .wayland_wire import WaylandConnection, text

APPLICATION = "org.example.Rival"

# X symbols, and the protocols' bits of Control and Alt.
SYMBOLS = {"Left": 0xFF51, "Up": 0xFF52, "Right": 0xFF53, "Down": 0xFF54, "C": 0x63, "D": 0x64}
CONTROL_ALT = 2 | 4

EVENTS = ("bound", "denied", "revoked", "pressed", "released")


@dataclass
class HotKey:
    number: int = 0
    events: list[str] = field(default_factory=list)
    message: str = ""

    def hear(self, operation: int, arguments: bytes) -> None:
        self.events.append(EVENTS[operation])
        if EVENTS[operation] == "denied":
            # After the reason.
            (length,) = struct.unpack_from("=I", arguments, 4)
            self.message = arguments[8:8 + length - 1].decode()

    @property
    def presses(self) -> int:
        return self.events.count("pressed")


class HotKeyClient:
    """`protocol`: "vicinae" or "xx"."""

    def __init__(self, socket_path: str, protocol: str, seconds: float):
        """`seconds`: the longest wait for the compositor."""
        self.connection = WaylandConnection(socket_path, seconds)
        self.is_old = protocol == "vicinae"
        self.manager = self.connection.bind(f"{protocol}_hotkey_manager_v1")
        if not self.is_old:
            self.connection.send(self.manager, 1, text(APPLICATION))

    def close(self) -> None:
        self.connection.close()

    def ask(self, key: str, effect: str) -> HotKey:
        """Requests Control, Alt and this key. The compositor has answered on return."""
        hot_key = HotKey()
        hot_key.number = self.connection.new_object(hot_key.hear)
        trigger = struct.pack("=II", SYMBOLS[key], CONTROL_ALT)
        if self.is_old:
            # Of any seat.
            arguments = struct.pack("=I", hot_key.number) + trigger + struct.pack("=I", 0)
            self.connection.send(self.manager, 1, arguments + text(APPLICATION) + text(effect))
        else:
            self.connection.send(self.manager, 2, struct.pack("=I", hot_key.number))
            self.connection.send(hot_key.number, 1, text(effect))
            self.connection.send(hot_key.number, 3, trigger)
            self.connection.send(hot_key.number, 5)
        self.connection.delivered()
        return hot_key

    def give_back(self, hot_key: HotKey) -> None:
        self.connection.send(hot_key.number, 0)
        self.connection.delivered()

    def listen(self) -> None:
        """Hears all events that the compositor has sent."""
        self.connection.delivered()
