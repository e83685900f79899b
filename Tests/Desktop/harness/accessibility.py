"""A screen reader's view: the tree of a program's widgets on the accessibility bus (AT-SPI 2)."""

import ast
from dataclasses import dataclass, field
from pathlib import Path
from typing import Iterator

from .rect import Rect
from .skipping import Skipped, require
from .waiting import PATIENCE, until

try:
    from gi.repository import Gio, GLib
except ImportError:
    Gio = None

SERVICE = Path("/usr/share/dbus-1/services/org.a11y.Bus.service")
REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
ACCESSIBLE = "org.a11y.atspi.Accessible"

# Bit numbers from AtspiStateType.
STATES = {
    1: "active", 4: "checked", 7: "editable", 8: "enabled", 11: "focusable", 12: "focused", 22: "selectable",
    23: "selected", 25: "showing", 30: "visible", 41: "checkable",
}


@dataclass
class Node:
    role: str
    name: str
    description: str
    states: frozenset[str]
    # Bus name and path of the accessibility bus's address.
    place: tuple[str, str] = ("", "")
    children: list["Node"] = field(default_factory=list)

    def all(self) -> Iterator["Node"]:
        """This widget and all widgets below it, in tree order."""
        yield self
        for child in self.children:
            yield from child.all()

    def shown(self) -> list["Node"]:
        return [node for node in self.all() if "showing" in node.states]

    def __str__(self) -> str:
        return f"{self.role} {self.name!r} ({', '.join(sorted(self.states))})"


class Accessibility:
    """Switches the session's accessibility on, as a screen reader does, and reads the programs' widgets."""

    def __init__(self, desktop):
        if Gio is None:
            raise Skipped("no module gi (Debian package python3-gi)")
        require("gdbus", "libglib2.0-bin")
        if not SERVICE.exists():
            raise Skipped("no accessibility bus (Debian package at-spi2-core)")
        session = desktop.session
        session.run([
            "gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
            "--method", "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<true>",
        ])
        answer = session.run([
            "gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
            "--method", "org.a11y.Bus.GetAddress",
        ])
        (address,) = ast.literal_eval(answer.strip())
        flags = Gio.DBusConnectionFlags
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
        )

    def close(self) -> None:
        self.bus.close_sync(None)

    def _call(self, place, interface: str, method: str, *arguments: str):
        values = GLib.Variant(f"({'s' * len(arguments)})", arguments) if arguments else None
        name, path = place
        reply = self.bus.call_sync(name, path, interface, method, values, None, Gio.DBusCallFlags.NONE, 5000, None)
        return reply.unpack()

    def _property(self, place, name: str) -> str:
        return self._call(place, "org.freedesktop.DBus.Properties", "Get", ACCESSIBLE, name)[0]

    def _process(self, name: str) -> int:
        bus = ("org.freedesktop.DBus", "/org/freedesktop/DBus")
        return self._call(bus, bus[0], "GetConnectionUnixProcessID", name)[0]

    def _read(self, place) -> Node:
        low, high = self._call(place, ACCESSIBLE, "GetState")[0]
        bits = high << 32 | low
        return Node(
            role=self._call(place, ACCESSIBLE, "GetRoleName")[0],
            name=self._property(place, "Name"),
            description=self._property(place, "Description"),
            states=frozenset(name for bit, name in STATES.items() if bits >> bit & 1),
            place=tuple(place),
            children=[self._read(child) for child in self._call(place, ACCESSIBLE, "GetChildren")[0]],
        )

    def extents(self, node: Node) -> Rect:
        """Its frame on the screen, in pixels."""
        name, path = node.place
        on_the_screen = GLib.Variant("(u)", (0,))
        reply = self.bus.call_sync(
            name, path, "org.a11y.atspi.Component", "GetExtents", on_the_screen, None, Gio.DBusCallFlags.NONE, 5000, None
        )
        return Rect(*reply.unpack()[0])

    def tree(self, process_id: int) -> Node | None:
        """The widgets of that process. None if it is not on the bus, or changed during the reading."""
        try:
            for application in self._call(REGISTRY, ACCESSIBLE, "GetChildren")[0]:
                if self._process(application[0]) == process_id:
                    return self._read(application)
        except GLib.Error:
            pass
        return None

    def until_tree(self, process_id: int, condition, what: str, seconds: float = PATIENCE) -> Node:
        """The tree, as soon as the condition holds for it."""
        def fitting() -> Node | None:
            tree = self.tree(process_id)
            return tree if tree and condition(tree) else None

        def seen() -> str:
            tree = self.tree(process_id)
            return "\n".join(map(str, tree.all())) if tree else "no tree"

        return until(fitting, what, seconds, seen)
