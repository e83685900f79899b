#!/usr/bin/python3
"""A window of our own whose manners are given on the command line: fixed in size, a panel, a dialog, shy of the focus.

Ends when its window is closed. Says the window's number on standard output once it is mapped.
"""

import argparse
import os

from Xlib import X, Xatom, Xutil, display

BACKGROUND, INK = 0xE9E4D8, 0x4A4540
PANEL_BACKGROUND = 0x35424F
# In the order in which the strut properties name them.
STRUT_SIDES = ("left", "right", "top", "bottom")


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--title", default="A window of our own")
    parser.add_argument("--place", nargs=4, type=int, default=(240, 180, 420, 300),
                        metavar=("X", "Y", "WIDTH", "HEIGHT"))
    parser.add_argument("--fixed", action="store_true", help="refuse every other size")
    parser.add_argument("--type", default="NORMAL", help="window type, as in _NET_WM_WINDOW_TYPE_...")
    for side in STRUT_SIDES:
        parser.add_argument(f"--strut-{side}", nargs=3, type=int, metavar=("THICKNESS", "FROM", "TO"),
                            help=f"keep that much of the screen's {side} free of windows, between two places along it")
    parser.add_argument("--transient-for", type=lambda text: int(text, 0))
    parser.add_argument("--no-focus", action="store_true", help="never take the keyboard focus")
    return parser.parse_args()


def main() -> None:
    wishes = arguments()
    connection = display.Display()
    screen = connection.screen()
    x, y, width, height = wishes.place
    window = screen.root.create_window(
        x, y, width, height, 0, screen.root_depth,
        background_pixel=PANEL_BACKGROUND if wishes.type == "DOCK" else BACKGROUND,
        event_mask=X.ExposureMask | X.StructureNotifyMask,
    )

    def atom(name: str) -> int:
        return connection.intern_atom(name)

    def set_numbers(name: str, kind: int, values: list[int]) -> None:
        window.change_property(atom(name), kind, 32, values)

    window.set_wm_name(wishes.title)
    window.set_wm_class("own-window", "OwnWindow")
    window.set_wm_protocols([atom("WM_DELETE_WINDOW"), atom("_NET_WM_PING")])
    window.set_wm_client_machine(os.uname().nodename)
    set_numbers("_NET_WM_PID", Xatom.CARDINAL, [os.getpid()])
    set_numbers("_NET_WM_WINDOW_TYPE", Xatom.ATOM, [atom(f"_NET_WM_WINDOW_TYPE_{wishes.type}")])
    hints = {"flags": Xutil.USPosition | Xutil.USSize}
    if wishes.fixed:
        hints = {"flags": hints["flags"] | Xutil.PMinSize | Xutil.PMaxSize,
                 "min_width": width, "max_width": width, "min_height": height, "max_height": height}
    window.set_wm_normal_hints(**hints)
    window.set_wm_hints(flags=Xutil.InputHint | Xutil.StateHint, input=not wishes.no_focus,
                        initial_state=Xutil.NormalState)
    if wishes.transient_for:
        window.set_wm_transient_for(connection.create_resource_object("window", wishes.transient_for))
    struts = [getattr(wishes, f"strut_{side}") or (0, 0, 0) for side in STRUT_SIDES]
    thickness = [strut[0] for strut in struts]
    if any(thickness):
        ranges = [place for strut in struts for place in strut[1:]]
        set_numbers("_NET_WM_STRUT_PARTIAL", Xatom.CARDINAL, thickness + ranges)
        set_numbers("_NET_WM_STRUT", Xatom.CARDINAL, thickness)
    window.map()
    ink = window.create_gc(foreground=INK)
    connection.flush()
    serve(connection, window, ink, wishes)


def serve(connection, window, ink, wishes) -> None:
    while True:
        event = connection.next_event()
        if event.type == X.MapNotify:
            print(window.id, flush=True)
        elif event.type == X.Expose and event.count == 0 and wishes.type != "DOCK":
            lines = [wishes.title, "This window keeps its size." if wishes.fixed else "This window takes any size."]
            for row, line in enumerate(lines):
                window.draw_text(ink, 24, 40 + 22 * row, line)
        elif event.type == X.ClientMessage:
            protocol = event.data[1][0]
            if protocol == connection.intern_atom("WM_DELETE_WINDOW"):
                return
            # A ping goes back to the root window unchanged but for its addressee.
            event.window = connection.screen().root
            connection.screen().root.send_event(event, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
            connection.flush()
        elif event.type == X.DestroyNotify:
            return


if __name__ == "__main__":
    main()
