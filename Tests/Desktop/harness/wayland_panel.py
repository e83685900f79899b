#!/usr/bin/python3
"""A Wayland panel along the upper edge of the screen at the origin. Its argument is its thickness, which it reserves.

It ends when it is killed. KWin 6.7 on Wayland no longer reserves space for X11 panels.
"""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
gi.require_version("GtkLayerShell", "0.1")
from gi.repository import Gdk, Gtk, GtkLayerShell  # noqa: E402


def main(thickness: int) -> None:
    window = Gtk.Window()
    window.set_size_request(-1, thickness)
    GtkLayerShell.init_for_window(window)
    GtkLayerShell.set_monitor(window, Gdk.Display.get_default().get_monitor_at_point(0, 0))
    GtkLayerShell.set_layer(window, GtkLayerShell.Layer.TOP)
    for edge in (GtkLayerShell.Edge.LEFT, GtkLayerShell.Edge.TOP, GtkLayerShell.Edge.RIGHT):
        GtkLayerShell.set_anchor(window, edge, True)
    GtkLayerShell.set_exclusive_zone(window, thickness)
    window.show()
    Gtk.main()


if __name__ == "__main__":
    main(int(sys.argv[1]))
