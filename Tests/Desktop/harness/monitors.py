"""Monitors that are connected, placed and disconnected, on a server with dummy hardware."""

from typing import NamedTuple

from .applications import own_window
from .desktop import Desktop
from .rect import Rect
from .waiting import until

OUTPUTS = ("DUMMY0", "DUMMY1")


class Plug(NamedTuple):
    """One enabled monitor."""

    output: str
    frame: Rect
    primary: bool = False


class Monitors:
    def __init__(self, desktop: Desktop):
        self.desktop = desktop

    def now(self) -> list[Rect]:
        """The server's monitors: the primary first, then in the server's own order."""
        found = self.desktop.windows.root.xrandr_get_monitors().monitors
        ordered = sorted(found, key=lambda monitor: not monitor.primary)
        return [Rect(one.x, one.y, one.width_in_pixels, one.height_in_pixels) for one in ordered]

    def arrange(self, *plugs: Plug) -> None:
        """Enables exactly these monitors, and waits until window manager and server agree on them."""
        windows = self.desktop.windows
        wanted = sorted(plug.frame for plug in plugs)

        def in_place() -> bool:
            if sorted(self.now()) == wanted:
                return True
            # A window manager may react to a new monitor with an arrangement of its own; then this one is requested
            # again.
            self._ask(plugs)
            windows.fence()
            return False

        self._ask(plugs)
        windows.fence()
        until(in_place, f"monitors {', '.join(map(str, wanted))}", saw=self.now)

    def _ask(self, plugs: tuple[Plug, ...]) -> None:
        command = ["xrandr"]
        for output in OUTPUTS:
            plug = next((one for one in plugs if one.output == output), None)
            command += ["--output", output]
            if plug:
                mode = f"{plug.frame.width}x{plug.frame.height}"
                if output != OUTPUTS[0]:
                    self.desktop.session.run(["xrandr", "--addmode", output, mode])
                command += ["--mode", mode, "--pos", f"{plug.frame.x}x{plug.frame.y}"]
                command += ["--primary"] if plug.primary else []
            else:
                command += ["--off"]
        self.desktop.session.run(command)
        # Only a query that probes the outputs makes the dummy monitor count as connected.
        self.desktop.session.run(["xrandr"])

    def put_panel(self, monitor: Rect, thickness: int) -> Rect:
        """Puts a panel at a monitor's lower edge. Returns the free area of the monitor."""
        screen = self.desktop.windows.root.get_geometry()
        bottom = monitor.y + monitor.height
        panel = self.desktop.start(own_window(
            "--type", "DOCK",
            "--place", *map(str, (monitor.x, bottom - thickness, monitor.width, thickness)),
            "--strut-bottom", *map(str, (screen.height - bottom + thickness, monitor.x, monitor.x + monitor.width - 1)),
        ))
        self.desktop.wait_for(panel)
        return monitor._replace(height=monitor.height - thickness)
