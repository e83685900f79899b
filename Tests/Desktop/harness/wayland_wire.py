"""A connection to a Wayland compositor, in the wire format itself (The Wayland Protocol, "Wire Format").

The tests send and read a dozen kinds of messages, so no library and no generated code are needed.
"""

import array
import socket
import struct
from typing import Callable

DISPLAY = 1

# Takes the number of the event and its arguments.
Listener = Callable[[int, bytes], None]


def text(value: str) -> bytes:
    """A string as an argument."""
    ended = value.encode() + b"\0"
    return struct.pack("=I", len(ended)) + ended + b"\0" * (-len(ended) % 4)


class WaylandConnection:
    def __init__(self, socket_path: str, seconds: float = 5.0):
        """`seconds`: the longest wait for a reply."""
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(seconds)
        self.socket.connect(socket_path)
        self.unread = b""
        self.last_object = DISPLAY
        self.globals: dict[str, int] = {}
        self.listeners: dict[int, Listener] = {}
        self.registry = self.new_object(self._hear_global)
        self.send(DISPLAY, 1, struct.pack("=I", self.registry))
        self.delivered()

    def close(self) -> None:
        self.socket.close()

    def new_object(self, listener: Listener | None = None) -> int:
        self.last_object += 1
        if listener is not None:
            self.listeners[self.last_object] = listener
        return self.last_object

    def bind(self, interface: str) -> int:
        """Makes an object for a global one, at version 1."""
        assert interface in self.globals, f"the compositor has no {interface}"
        number = self.new_object()
        arguments = struct.pack("=I", self.globals[interface]) + text(interface) + struct.pack("=II", 1, number)
        self.send(self.registry, 0, arguments)
        return number

    def send(self, receiver: int, operation: int, arguments: bytes = b"", file: int | None = None) -> None:
        message = struct.pack("=II", receiver, (len(arguments) + 8) << 16 | operation) + arguments
        rights = [] if file is None else [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [file]))]
        self.socket.sendmsg([message], rights)

    def delivered(self) -> None:
        """Returns after the compositor has handled all messages, and all events that it sent before are heard."""
        done: list[bytes] = []
        callback = self.new_object(lambda _, arguments: done.append(arguments))
        self.send(DISPLAY, 0, struct.pack("=I", callback))
        while not done:
            self._read_one()
        del self.listeners[callback]

    def _read_one(self) -> None:
        while len(self.unread) < 8 or len(self.unread) < self._length():
            received = self.socket.recv(65536)
            assert received, "the compositor has closed the connection"
            self.unread += received
        sender, word = struct.unpack_from("=II", self.unread)
        arguments, self.unread = self.unread[8:self._length()], self.unread[self._length():]
        operation = word & 0xFFFF
        assert (sender, operation) != (DISPLAY, 0), f"the compositor refuses: {arguments[12:]!r}"
        if sender in self.listeners:
            self.listeners[sender](operation, arguments)

    def _hear_global(self, operation: int, arguments: bytes) -> None:
        if operation == 0:
            name, length = struct.unpack_from("=II", arguments)
            self.globals[arguments[8:8 + length - 1].decode()] = name

    def _length(self) -> int:
        return struct.unpack_from("=I", self.unread, 4)[0] >> 16
