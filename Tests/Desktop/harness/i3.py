"""An X11 desktop with i3. The harness arranges windows over i3's IPC and reads the results from the X server."""

from pathlib import Path
from typing import Any, NamedTuple

from Xlib import X, error

from . import servers
from .applications import own_window
from .desktop import Desktop, RunningApplication
from .rect import Rect
from .skipping import require
from .sway_ipc import GET_MARKS, GET_TREE, RUN_COMMAND, Connection, nodes, rect_of
from .waiting import until
from .window_managers import WindowManager
from .windows import Windows

I3 = WindowManager("i3", "i3-wm", ("i3",), None)

CONFIGURATION = """# i3 config file (v4)
font pango:monospace 10
focus_follows_mouse no
"""
BAR = """
bar {
    position top
    status_command true
}
"""


class Node(NamedTuple):
    """A window's properties in i3, apart from its frame."""

    floating: bool
    border: str
    border_width: int
    focused: bool
    workspace: str


class I3Windows(Windows):
    """i3 does not report the width of its borders; the visible frame is that of i3's window around the client's."""

    def frame(self, identifier: int) -> Rect:
        window = self.window(identifier)
        while (parent := window.query_tree().parent) != self.root:
            window = parent
        geometry = window.get_geometry()
        return Rect(geometry.x, geometry.y, geometry.width, geometry.height)


class I3Desktop(Desktop):
    def __init__(
        self, program: Path | None = None, configuration: str = "", name: str = "i3", server=servers.virtual, bar=BAR
    ):
        require("i3", "i3-wm")
        super().__init__(program, server, name)
        self.windows.close()
        self.windows = I3Windows(self.server.display)
        self.connection: Connection | None = None
        self.bar = bar
        try:
            self.configure(configuration)
            self.start_i3()
        except BaseException:
            self.close()
            raise

    # The window manager

    def configure(self, text: str) -> None:
        """Gives i3 this configuration in addition to the tests' own; the next start or reload reads it."""
        self.session.configure(".config/i3/config", CONFIGURATION + self.bar + text)

    def line_of(self, end: str) -> int:
        """The number of the line of i3's configuration that ends in this text."""
        lines = (self.session.home / ".config/i3/config").read_text().splitlines()
        (number,) = [number for number, line in enumerate(lines, start=1) if line.endswith(end)]
        return number

    def start_i3(self, *options: str) -> None:
        self.manager = I3
        self.manager_process = self.session.start([*I3.command, *options], "i3")
        self.until_settled()
        self.connect()

    def start_i3_in_place_of_another(self) -> None:
        former = self.manager_process
        self.start_i3("--replace")
        until(lambda: former.poll() is not None, "the replaced window manager to end")

    def stop_window_manager(self, *arguments) -> None:
        self.disconnect()
        super().stop_window_manager(*arguments)

    def connect(self) -> None:
        """Connects to the current i3 once it listens and its bars are there."""
        def listens() -> bool:
            self.disconnect()
            value = self.windows.root.get_full_property(self.windows.atom("I3_SOCKET_PATH"), X.AnyPropertyType)
            try:
                self.connection = Connection(Path(value.value.decode()))
                return self._has_bars()
            except (AttributeError, OSError):
                return False

        until(listens, "i3 to listen", 15.0)
        self.windows.fence()

    def disconnect(self) -> None:
        if self.connection is not None:
            self.connection.close()
        self.connection = None

    def restart_in_place(self) -> None:
        """Like `i3-msg restart`: the same process and windows, everything else new."""
        # The bars of the former i3 are gone.
        check = self.windows.cardinals(self.windows.root, "_NET_SUPPORTING_WM_CHECK")[0]
        self.connection.ask_only(RUN_COMMAND, "restart")

        def is_another() -> bool:
            try:
                self.windows.window(check).get_geometry()
            except (error.BadWindow, error.BadDrawable):
                return True
            return False

        until(is_another, "i3 to restart")
        self.until_settled()
        self.connect()

    def reload(self) -> None:
        """Makes i3 reload the configuration; its bars then create their windows again."""
        before = set(self._bars())
        self.command("reload")
        until(lambda: self._has_bars() and before.isdisjoint(self._bars()), "the bars to be there again", 15.0)
        self.windows.fence()

    def _has_bars(self) -> bool:
        outputs = self._outputs()
        return bool(outputs) and all(area.y > output.y for output, area in outputs) or not self.bar

    def command(self, text: str) -> None:
        results = self.connection.ask(RUN_COMMAND, text)
        assert all(result["success"] for result in results), f"{text}: {results}"
        self.windows.fence()

    def tree(self) -> dict[str, Any]:
        return self.connection.ask(GET_TREE)

    def marks(self) -> list[str]:
        """The marks that a test's bindings set."""
        return self.connection.ask(GET_MARKS)

    # Outputs and windows

    def _outputs(self) -> list[tuple[Rect, Rect]]:
        """Each output with the area that bars and docks leave free."""
        found = []
        for node in self.tree()["nodes"]:
            if node["name"] != "__i3":
                content = next(part for part in node["nodes"] if part["name"] == "content")
                shown = next(each for each in content["nodes"] if each["id"] == content["focus"][0])
                found.append((rect_of(node), rect_of(shown)))
        return sorted(found)

    def work_area(self, output: int = 0) -> Rect:
        return self._outputs()[output][1]

    def put_dock(self, monitor: Rect, thickness: int) -> Rect:
        """Puts a panel at a monitor's lower edge. Returns the free area of the monitor. i3 lists no docks."""
        screen = self.windows.root.get_geometry()
        bottom = monitor.y + monitor.height
        before = self._outputs()
        self.start(own_window(
            "--type", "DOCK",
            "--place", *map(str, (monitor.x, bottom - thickness, monitor.width, thickness)),
            "--strut-bottom", *map(str, (screen.height - bottom + thickness, monitor.x, monitor.x + monitor.width - 1)),
        ))
        until(lambda: self._outputs() != before, "i3 to make room for the panel")
        return monitor._replace(height=monitor.height - thickness)

    def bar_height(self) -> int:
        """The frames of i3's own bars, from the server."""
        return self.windows.frame(self._bar()).height

    def bar_items(self) -> int:
        """The number of programs' items in i3's own bar."""
        return len(self.windows.window(self._bar()).query_tree().children)

    def _bar(self) -> int:
        return self._bars()[0]

    def _bars(self) -> list[int]:
        return [node["window"] for node, _ in nodes(self.tree()) if (node["name"] or "").startswith("i3bar")]

    def node(self, window: int) -> Node:
        for node, workspace in nodes(self.tree()):
            for child in node["nodes"]:
                if child["window"] == window:
                    return Node(
                        node["type"] == "floating_con", child["border"], child["current_border_width"],
                        child["focused"], workspace,
                    )
        raise AssertionError(f"i3 has no window {window:#x}")

    def place(self, window: int, frame: Rect) -> None:
        """Takes a window out of the layout, moves it there and gives it the focus, as a person might."""
        self.command(
            f"[id={window}] floating enable, resize set width {frame.width} px height {frame.height} px,"
            f" move absolute position {frame.x} px {frame.y} px, focus"
        )
        until(lambda: self.windows.active() == window, "the window to have the focus")

    def tile(self, window: int) -> None:
        """Puts a window back into the layout and gives it the focus."""
        self.command(f"[id={window}] floating disable, focus")
        until(lambda: self.windows.active() == window, "the window to have the focus")

    def open(self, application, *options: str) -> RunningApplication:
        """Starts an application and waits until i3 has given its new window the focus."""
        running = self.start(application, *options)
        self.wait_for(running)
        until(lambda: self.windows.active() == running.window, f"{application.name} to have the focus")
        return running

    def close(self) -> None:
        self.disconnect()
        super().close()
