#!/usr/bin/python3
"""Our own window with options on the command line: fixed in size, a panel, a dialog, shy of the focus.

The program ends when its last window is closed. It prints a window's number on standard output once the window is
mapped, and "restored" after it has moved back a window that another client had moved. It opens another window when it
receives the message _OWN_WINDOW_OPEN with a window type.
"""

import argparse
import os
import select
import time

from Xlib import X, Xatom, Xutil, display

BACKGROUND, INK = 0xE9E4D8, 0x4A4540
PANEL_BACKGROUND = 0x35424F
# As long as applications take to restore their last position.
RESTORING_TAKES = 0.05
# In the order of the strut properties.
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
    parser.add_argument("--class-name", default="OwnWindow", help="class and, in small letters, instance")
    parser.add_argument("--class-late", action="store_true", help="say the class only when the window is managed")
    parser.add_argument("--restores", action="store_true", help="put the first window back, once, a moment after it is resized")
    parser.add_argument("--no-focus", action="store_true", help="never take the keyboard focus")
    return parser.parse_args()


class OwnWindow:
    def __init__(self, connection, wishes, kind: str, place: tuple[int, int, int, int]):
        self.connection, self.wishes, self.kind, self.place = connection, wishes, kind, place
        screen = connection.screen()
        x, y, width, height = place
        self.window = screen.root.create_window(
            x, y, width, height, 0, screen.root_depth,
            background_pixel=PANEL_BACKGROUND if kind == "DOCK" else BACKGROUND,
            event_mask=X.ExposureMask | X.StructureNotifyMask | X.PropertyChangeMask,
        )
        self.ink = self.window.create_gc(foreground=INK)
        self.describe()
        self.window.map()
        connection.flush()

    def atom(self, name: str) -> int:
        return self.connection.intern_atom(name)

    def set_numbers(self, name: str, kind: int, values: list[int]) -> None:
        self.window.change_property(self.atom(name), kind, 32, values)

    def describe(self) -> None:
        window, wishes = self.window, self.wishes
        _, _, width, height = self.place
        window.set_wm_name(wishes.title)
        if not wishes.class_late:
            self.say_class()
        window.set_wm_protocols([self.atom("WM_DELETE_WINDOW"), self.atom("_NET_WM_PING")])
        window.set_wm_client_machine(os.uname().nodename)
        self.set_numbers("_NET_WM_PID", Xatom.CARDINAL, [os.getpid()])
        self.set_numbers("_NET_WM_WINDOW_TYPE", Xatom.ATOM, [self.atom(f"_NET_WM_WINDOW_TYPE_{self.kind}")])
        hints = {"flags": Xutil.USPosition | Xutil.USSize}
        if wishes.fixed:
            hints = {"flags": hints["flags"] | Xutil.PMinSize | Xutil.PMaxSize,
                     "min_width": width, "max_width": width, "min_height": height, "max_height": height}
        window.set_wm_normal_hints(**hints)
        # The library leaves out the position fields of older clients; i3 reads the position there, and ignores zeros.
        flags, _, _, _, _, *others = window.get_full_property(Xatom.WM_NORMAL_HINTS, Xatom.WM_SIZE_HINTS).value
        window.change_property(Xatom.WM_NORMAL_HINTS, Xatom.WM_SIZE_HINTS, 32, [flags, *self.place, *others])
        window.set_wm_hints(flags=Xutil.InputHint | Xutil.StateHint, input=not wishes.no_focus,
                            initial_state=Xutil.NormalState)
        if wishes.transient_for:
            window.set_wm_transient_for(self.connection.create_resource_object("window", wishes.transient_for))
        struts = [getattr(wishes, f"strut_{side}") or (0, 0, 0) for side in STRUT_SIDES]
        thickness = [strut[0] for strut in struts]
        if any(thickness):
            ranges = [place for strut in struts for place in strut[1:]]
            self.set_numbers("_NET_WM_STRUT_PARTIAL", Xatom.CARDINAL, thickness + ranges)
            self.set_numbers("_NET_WM_STRUT", Xatom.CARDINAL, thickness)

    def say_class(self) -> None:
        self.window.set_wm_class(self.wishes.class_name.lower(), self.wishes.class_name)

    def restore(self) -> None:
        """Moves the window back to its first position."""
        x, y, width, height = self.place
        self.window.configure(x=x, y=y, width=width, height=height)
        self.connection.flush()

    def draw(self) -> None:
        lines = [self.wishes.title,
                 "This window keeps its size." if self.wishes.fixed else "This window takes any size."]
        for row, line in enumerate(lines):
            self.window.draw_text(self.ink, 24, 40 + 22 * row, line)


def main() -> None:
    wishes = arguments()
    connection = display.Display()
    first = OwnWindow(connection, wishes, wishes.type, wishes.place)
    serve(connection, wishes, {first.window.id: first})


def serve(connection, wishes, windows: dict[int, OwnWindow]) -> None:
    restores, says_class = wishes.restores, wishes.class_late
    restoring: tuple[float, OwnWindow] | None = None
    while windows:
        while restoring and not connection.pending_events():
            rest = restoring[0] - time.monotonic()
            if rest <= 0:
                restoring[1].restore()
                restoring = None
                print("restored", flush=True)
            else:
                select.select([connection], [], [], rest)
        event = connection.next_event()
        own = windows.get(getattr(event.window, "id", 0)) if hasattr(event, "window") else None
        if own is None:
            continue
        if event.type == X.MapNotify:
            print(own.window.id, flush=True)
        elif event.type == X.PropertyNotify:
            # The window manager sets this when it has started to manage the window.
            if says_class and event.atom == connection.intern_atom("WM_STATE"):
                says_class = False
                own.say_class()
                connection.flush()
        elif event.type == X.ConfigureNotify:
            if restores and (event.width, event.height) != own.place[2:]:
                restores = False
                restoring = (time.monotonic() + RESTORING_TAKES, own)
        elif event.type == X.Expose and event.count == 0 and own.kind != "DOCK":
            own.draw()
        elif event.type == X.ClientMessage:
            if event.client_type == connection.intern_atom("_OWN_WINDOW_OPEN"):
                kind = connection.get_atom_name(event.data[1][0])
                x, y, width, height = wishes.place
                another = OwnWindow(connection, wishes, kind, (x + 60, y + 60, width, height))
                windows[another.window.id] = another
                continue
            if event.data[1][0] == connection.intern_atom("WM_DELETE_WINDOW"):
                own.window.destroy()
                connection.flush()
                del windows[own.window.id]
                continue
            # A ping returns to the root window; only its addressee changes.
            event.window = connection.screen().root
            connection.screen().root.send_event(event, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
            connection.flush()
        elif event.type == X.DestroyNotify:
            windows.pop(own.window.id, None)


if __name__ == "__main__":
    main()
