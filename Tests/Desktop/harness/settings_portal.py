#!/usr/bin/python3
"""A desktop's settings portal with one setting, the colour scheme: the number in the file on its command line.

It emits a signal whenever the number changes (XDG Desktop Portal, org.freedesktop.portal.Settings).
"""

import sys
from pathlib import Path

from gi.repository import Gio, GLib

NAME, PLACE = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
  <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""
SPACE, KEY = "org.freedesktop.appearance", "color-scheme"


def main() -> None:
    file = Path(sys.argv[1])
    scheme = lambda: GLib.Variant("u", int(file.read_text() or "0"))
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]

    def read_all(_bus, _sender, _path, _interface, _method, _arguments, call) -> None:
        call.return_value(GLib.Variant("(a{sa{sv}})", ({SPACE: {KEY: scheme()}},)))

    reported = None

    def look() -> bool:
        nonlocal reported
        # The file is empty for a moment while it is written.
        if file.read_text() and reported != (reported := file.read_text()):
            change = GLib.Variant("(ssv)", (SPACE, KEY, scheme()))
            bus.emit_signal(None, PLACE, interface.name, "SettingChanged", change)
        return True

    bus.register_object(PLACE, interface, read_all, None, None)
    Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.timeout_add(10, look)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
