"""A connection to the message bus of a test's session."""

from .waiting import PATIENCE

try:
    from gi.repository import Gio, GLib
except ImportError:
    Gio = GLib = None


class Bus:
    """A connection to the session's message bus."""

    def __init__(self, address: str):
        flags = Gio.DBusConnectionFlags
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
        )

    def call(self, name: str, path: str, interface: str, method: str, types: str = "()", *values, timeout: int = int(1000 * PATIENCE)):
        parameters = GLib.Variant(types, values)
        return self.connection.call_sync(
            name, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, timeout, None
        ).unpack()

    def has(self, name: str) -> bool:
        bus = "org.freedesktop.DBus"
        return self.call(bus, "/org/freedesktop/DBus", bus, "NameHasOwner", "(s)", name)[0]

    def close(self) -> None:
        self.connection.close_sync(None)
