"""A system's message bus of a test's own, and the login manager on it, as far as its word on locking goes."""

import socket

from .session import Session
from .skipping import Skipped
from .waiting import PATIENCE, until

try:
    from gi.repository import Gio, GLib
except ImportError:
    Gio = None

CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
  "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>system</type><listen>{address}</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
<allow user="*"/></policy></busconfig>
"""


def listens(path: str) -> bool:
    """Whether somebody takes connections there. The socket is there before that."""
    with socket.socket(socket.AF_UNIX) as connection:
        return connection.connect_ex(path) == 0


def boolean(value: bool):
    """A value of that type, for what may be of any."""
    return GLib.Variant("b", value)


def start_system_bus(session: Session) -> str:
    """Starts it where the session's environment says; gives its address."""
    address = session.environment["DBUS_SYSTEM_BUS_ADDRESS"]
    configuration = session.directory / "system-bus.conf"
    configuration.write_text(CONFIGURATION.format(address=address))
    session.start(["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile"], "system-bus")
    until(lambda: listens(str(session.runtime / "system-bus")), "the system's bus")
    return address


class Speaker:
    """Somebody on a bus who says things, under a name if one is given."""

    def __init__(self, address: str, name: str = ""):
        if Gio is None:
            raise Skipped("no module gi; install the Debian package python3-gi")
        flags = Gio.DBusConnectionFlags
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
        )
        if name:
            self.connection.call_sync(
                "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                GLib.Variant("(su)", (name, 0)), None, Gio.DBusCallFlags.NONE, int(1000 * PATIENCE), None,
            )

    def say(self, path: str, interface: str, member: str, types: str = "()", *values) -> None:
        self.connection.emit_signal(None, path, interface, member, GLib.Variant(types, values))
        self.connection.flush_sync(None)
