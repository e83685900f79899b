"""Wayfire's state and requests over its socket, by a client that is independent of the program's."""

import json
import select
import socket
import struct
from pathlib import Path
from typing import Any, NamedTuple

from .rect import Rect

# The plugin "decoration" draws this around a window, beside the program's own part.
BORDER, TITLE = 4, 30


class View(NamedTuple):
    number: int
    process: int
    application: str
    title: str
    # Wayfire's goal for it, in the space of all outputs.
    goal: Rect
    # The drawn part of the program itself, with its own shadow.
    content: Rect
    output: int
    tiled: bool
    fullscreen: bool
    sticky: bool

    @property
    def frame(self) -> Rect:
        """The frame with the decoration, derived from what is drawn."""
        x, y, width, height = self.content
        return Rect(x - BORDER, y - BORDER - TITLE, width + 2 * BORDER, height + 2 * BORDER + TITLE)


class Connection:
    def __init__(self, path: Path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(5)
        self.socket.connect(str(path))
        self.events: list[dict] = []

    def close(self) -> None:
        self.socket.close()

    def ask(self, method: str, **data: Any) -> Any:
        """The answer; fails if Wayfire refuses."""
        text = json.dumps({"method": method, "data": data}).encode()
        self.socket.sendall(struct.pack("<I", len(text)) + text)
        while "event" in (answer := self._read()):
            self.events.append(answer)
        assert "error" not in answer, f"{method} {data}: {answer}"
        return answer

    def take_events(self) -> list[dict]:
        """The events that have come since this was last asked."""
        while select.select([self.socket], [], [], 0)[0]:
            self.events.append(self._read())
        taken, self.events = self.events, []
        return taken

    def outputs(self) -> list[dict]:
        """From left to right."""
        return sorted(self.ask("window-rules/list-outputs"), key=lambda output: output["geometry"]["x"])

    def output(self, number: int) -> dict:
        return next(output for output in self.outputs() if output["id"] == number)

    def views(self) -> list[View]:
        """All windows that are shown, oldest first."""
        outputs = {output["id"]: rect_of(output["geometry"]) for output in self.outputs()}
        return [
            view_of(view, outputs[view["output-id"]])
            for view in sorted(self.ask("window-rules/list-views"), key=lambda view: view["id"])
            if view["role"] == "toplevel" and view["mapped"] and view["output-id"] in outputs
        ]

    def focused(self) -> int | None:
        view = self.ask("window-rules/get-focused-view")["info"]
        return view["id"] if view else None

    def _read(self) -> Any:
        (length,) = struct.unpack("<I", self._bytes(4))
        return json.loads(self._bytes(length).decode(errors="replace"))

    def _bytes(self, count: int) -> bytes:
        read = b""
        while len(read) < count:
            part = self.socket.recv(count - len(read))
            if not part:
                raise ConnectionError("Wayfire has closed the connection")
            read += part
        return read


def rect_of(rect: dict) -> Rect:
    return Rect(*(rect[part] for part in ("x", "y", "width", "height")))


def view_of(view: dict, output: Rect) -> View:
    def everywhere(rect: Rect) -> Rect:
        return rect._replace(x=rect.x + output.x, y=rect.y + output.y)

    return View(
        view["id"], view["pid"], view["app-id"], view["title"], everywhere(rect_of(view["geometry"])),
        everywhere(rect_of(view["base-geometry"])), view["output-id"], view["tiled-edges"] != 0, view["fullscreen"],
        view["sticky"],
    )
