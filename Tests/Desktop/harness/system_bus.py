"""A private system bus with a login manager, as far as its signals for locking go."""

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
    """Whether a server accepts connections there. The socket exists before that."""
    with socket.socket(socket.AF_UNIX) as connection:
        return connection.connect_ex(path) == 0


def boolean(value: bool):
    """A value of that type, for arguments of any type."""
    return GLib.Variant("b", value)


def start_system_bus(session: Session) -> str:
    """Starts it at the address in the session's environment. Returns the address."""
    address = session.environment["DBUS_SYSTEM_BUS_ADDRESS"]
    configuration = session.directory / "system-bus.conf"
    configuration.write_text(CONFIGURATION.format(address=address))
    session.start(["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile"], "system-bus")
    until(lambda: listens(str(session.runtime / "system-bus")), "the system's bus")
    return address


class Speaker:
    """A client on a bus that sends messages, under a name if one is given."""

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
