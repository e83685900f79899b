"""sway's state and commands over its socket, by a client that is independent of the program's (sway-ipc(7))."""

import json
import select
import socket
import struct
from pathlib import Path
from typing import Any, Iterator, NamedTuple

from .rect import Rect

RUN_COMMAND, SUBSCRIBE, GET_TREE, GET_MARKS, GET_BINDING_STATE = 0, 2, 4, 5, 12
HEADER = struct.Struct("=6sII")


class Window(NamedTuple):
    number: int
    process: int
    title: str
    frame: Rect
    focused: bool
    floating: bool
    fullscreen: bool
    border: str
    workspace: str


class Connection:
    def __init__(self, path: Path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(5)
        self.socket.connect(str(path))

    def close(self) -> None:
        self.socket.close()

    def ask(self, kind: int, payload: str = "") -> Any:
        self.ask_only(kind, payload)
        return self.read()[1]

    def ask_only(self, kind: int, payload: str = "") -> None:
        encoded = payload.encode()
        self.socket.sendall(HEADER.pack(b"i3-ipc", len(encoded), kind) + encoded)

    def read(self) -> tuple[int, Any]:
        _, length, kind = HEADER.unpack(self._bytes(HEADER.size))
        return kind, json.loads(self._bytes(length).decode(errors="replace"))

    def has_something(self) -> bool:
        return bool(select.select([self.socket], [], [], 0)[0])

    def _bytes(self, count: int) -> bytes:
        read = b""
        while len(read) < count:
            part = self.socket.recv(count - len(read))
            if not part:
                raise ConnectionError("sway has closed the connection")
            read += part
        return read


class Listener:
    """Receives the events of used bindings."""

    def __init__(self, path: Path):
        self.connection = Connection(path)
        assert self.connection.ask(SUBSCRIBE, '["binding"]')["success"]

    def commands(self) -> list[str]:
        """The commands of all bindings used since the last call."""
        heard = []
        while self.connection.has_something():
            heard.append(self.connection.read()[1]["binding"]["command"])
        return heard

    def close(self) -> None:
        self.connection.close()


def rect_of(node: dict, name: str = "rect") -> Rect:
    return Rect(*(node[name][part] for part in ("x", "y", "width", "height")))


def nodes(tree: dict, workspace: str = "") -> Iterator[tuple[dict, str]]:
    """All containers, each with the name of its workspace."""
    workspace = tree["name"] if tree["type"] == "workspace" else workspace
    yield tree, workspace
    for child in tree["nodes"] + tree["floating_nodes"]:
        yield from nodes(child, workspace)


def windows_of(tree: dict) -> list[Window]:
    """The windows; each frame is the drawn part, with the title bar above."""
    found = []
    for node, workspace in nodes(tree):
        if node.get("pid"):
            rect, bar = rect_of(node), rect_of(node, "deco_rect").height
            found.append(Window(
                node["id"], node["pid"], node["name"] or "", Rect(rect.x, rect.y - bar, rect.width, rect.height + bar),
                node["focused"], node["type"] == "floating_con", node["fullscreen_mode"] != 0, node["border"], workspace,
            ))
    return found
