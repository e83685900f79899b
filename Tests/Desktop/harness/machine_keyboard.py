"""The keyboard of the virtual machine that the tests run in.

The machine's control socket is one of its devices (scripts/virtual-machine). QEMU presses the keys of the emulated
keyboard, so they take the way of real ones, through the kernel and libinput (QEMU Machine Protocol, "input-send-event").
"""

import json
import os
from pathlib import Path

from .keyboard import SHORTCUTS

PORTS = Path("/sys/class/virtio-ports")

# QEMU's names of the keys.
NAMES = {"Control": "ctrl", "Alt": "alt", "Escape": "esc"}


class MachineKeyboard:
    def __init__(self) -> None:
        (port,) = (each for each in PORTS.iterdir() if (each / "name").read_text().strip() == "control")
        self.port = os.open(f"/dev/{port.name}", os.O_RDWR)
        self.unread = b""
        self.last_request = 0
        # Only the first use of the socket needs it; later ones are refused.
        self._ask("qmp_capabilities")

    def close(self) -> None:
        os.close(self.port)

    def press(self, action: str) -> None:
        """Presses and releases an action's shortcut. On return, the machine's keyboard has its events."""
        self.chord("Control", "Alt", SHORTCUTS[action])

    def chord(self, *keys: str) -> None:
        for key in keys:
            self._send(key, True)
        for key in reversed(keys):
            self._send(key, False)

    def _send(self, key: str, is_down: bool) -> None:
        name = {"type": "qcode", "data": NAMES.get(key, key.lower())}
        reply = self._ask("input-send-event", events=[{"type": "key", "data": {"down": is_down, "key": name}}])
        assert "return" in reply, reply

    def _ask(self, command: str, **arguments) -> dict:
        self.last_request += 1
        # Another process may have left replies.
        identifier = f"{os.getpid()}-{self.last_request}"
        request = {"execute": command, "arguments": arguments, "id": identifier}
        os.write(self.port, json.dumps(request).encode() + b"\n")
        while True:
            while b"\n" not in self.unread:
                self.unread += os.read(self.port, 65536)
            line, self.unread = self.unread.split(b"\n", 1)
            reply = json.loads(line)
            if reply.get("id") == identifier:
                return reply
