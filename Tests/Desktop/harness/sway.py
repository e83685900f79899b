"""A private sway with headless outputs, its session, keys and state."""

import os
import subprocess
import time
from contextlib import suppress
from pathlib import Path

from .compositor import FIRST, HEADLESS, SECOND, CompositorDesktop
from .rect import Rect
from .session import Session
from .skipping import Skipped, require
from .sway_ipc import GET_TREE, RUN_COMMAND, Connection, Window, rect_of, windows_of
from .waiting import STARTING, until, until_equal
from .wayland_keyboard import WaylandKeyboard

CONFIGURATION = """
output HEADLESS-1 mode 1920x1080 position 0 0
output HEADLESS-2 mode 1280x1024 position 1920 0
focus_follows_mouse no
bar {
    position top
    status_command true
}
exec echo "$DISPLAY" >"$XDG_RUNTIME_DIR/display"
"""

# Programs reply within some milliseconds, and on a busy machine within a tenth of a second.
STAYING = 0.25

# The tests' files are not confidential.
UNPRIVILEGED = 65534


class UnprivilegedSession(Session):
    """A session of another user than root: sway refuses to run as root."""

    def __init__(self) -> None:
        super().__init__()
        self.environment |= {
            "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "sway", "GDK_BACKEND": "wayland",
            "QT_QPA_PLATFORM": "wayland",
        }
        if os.geteuid() == 0:
            require("setpriv", "util-linux")
            user = str(UNPRIVILEGED)
            # The end of this process must end the others; a change of user would clear that setting.
            self.prefix = ["setpriv", f"--reuid={user}", f"--regid={user}", "--clear-groups", "--pdeathsig=KILL"]

    def start(self, command: list[str], log: str, extra: dict[str, str] | None = None, **options):
        self._hand_over()
        return super().start([*self.prefix, *command], log, extra, **options)

    def run(self, command: list[str], extra: dict[str, str] | None = None) -> str:
        self._hand_over()
        return super().run([*self.prefix, *command], extra)

    def can_read(self, path: Path) -> bool:
        """Whether the session's user can do this. It may be another user than the one who runs the tests."""
        command = [*self.prefix, "test", "-r", str(path)]
        return subprocess.run(command, stdin=subprocess.DEVNULL, timeout=10, check=False).returncode == 0

    def _hand_over(self) -> None:
        if self.prefix:
            for folder, folders, files in os.walk(self.directory):
                for name in (".", *folders, *files):
                    # Running programs create and remove files meanwhile.
                    with suppress(FileNotFoundError):
                        os.chown(Path(folder, name), UNPRIVILEGED, UNPRIVILEGED, follow_symlinks=False)


class SwayDesktop(CompositorDesktop):
    title = "sway"

    def __init__(self, program: Path | None = None, configuration: str = "", name: str = "sway"):
        require("sway", "sway")
        super().__init__(UnprivilegedSession(), program, name)
        self.socket = self.session.runtime / "sway.sock"
        self.configuration = self.session.home / ".config/sway/config"
        try:
            for path in filter(None, (program, Path(__file__).resolve())):
                if not self.session.can_read(path):
                    raise Skipped(f"{path} is in a folder that only its owner can enter")
            self.configure(configuration)
            self.start()
            self.session.start_bus()
        except BaseException:
            self.close()
            raise

    # The compositor

    def configure(self, text: str) -> None:
        """Gives sway this configuration in addition to the tests' own; the next start or reload reads it."""
        self.configuration.parent.mkdir(parents=True, exist_ok=True)
        self.configuration.write_text(CONFIGURATION + text)

    def start(self) -> None:
        self.compositor = self.session.start(
            ["sway", "-c", str(self.configuration)], "sway",
            HEADLESS | {"SWAYSOCK": str(self.socket)},
        )
        self.until_answers(Connection)
        (display,) = {path.name for path in self.session.runtime.glob("wayland-*") if path.suffix != ".lock"}
        reported = self.session.runtime / "display"
        until(lambda: reported.exists() and reported.read_text().endswith("\n"), "the display for programs of X11")
        self.session.environment |= {
            "SWAYSOCK": str(self.socket), "WAYLAND_DISPLAY": display, "DISPLAY": reported.read_text().strip(),
        }
        until_equal(self.outputs, [FIRST, SECOND], "the outputs")
        until(lambda: self.work_area(1).y > 0, "the bars to be there", STARTING)
        # The output that has the focus at first differs between versions.
        self.command(f"focus output {self._output_nodes()[0]['name']}")
        self.keyboard = WaylandKeyboard(str(self.session.runtime / display))

    def restart(self) -> None:
        """Starts it again at the same sockets after it has ended."""
        self.close_connections()
        for path in self.session.runtime.glob("wayland-*"):
            path.unlink()
        (self.session.runtime / "display").unlink()
        self.socket.unlink(missing_ok=True)
        self.start()

    def stop(self) -> None:
        super().stop()
        # At times sway 1.7 does not end and is killed; then its socket stays, as after a crash.
        self.socket.unlink(missing_ok=True)

    def command(self, text: str) -> None:
        results = self.connection.ask(RUN_COMMAND, text)
        assert all(result["success"] for result in results), f"{text}: {results}"

    def tree(self) -> dict:
        return self.connection.ask(GET_TREE)

    # Outputs and windows

    def outputs(self) -> list[Rect]:
        return [rect_of(node) for node in self._output_nodes()]

    def work_area(self, output: int = 0) -> Rect:
        """An output without its bars."""
        node = self._output_nodes()[output]
        return next(rect_of(each) for each in node["nodes"] if each["name"] == node["current_workspace"])

    def _output_nodes(self) -> list[dict]:
        """From left to right; versions of sway list them in different orders."""
        return sorted((node for node in self.tree()["nodes"] if node["name"] != "__i3"), key=lambda node: rect_of(node).x)

    def windows(self) -> list[Window]:
        return windows_of(self.tree())

    def has_focus(self, number: int) -> bool:
        return self.window(number).focused

    def is_in_layout(self, number: int) -> bool:
        return not self.window(number).floating

    def drag(self, number: int, step: int) -> None:
        self.command(f"[con_id={number}] floating enable, move absolute position {100 + step % 300} px 200 px")

    def place(self, number: int, frame: Rect) -> None:
        """Takes a window out of the layout and moves it there, as a person might. Returns when it stays there.

        A program that still handles an earlier request resizes the window back to that.
        """
        since = 0.0

        def stays() -> bool:
            nonlocal since
            if self.frame(number) != frame or not self.window(number).focused:
                self.command(
                    f"[con_id={number}] floating enable, resize set width {frame.width} px height {frame.height} px,"
                    f" move absolute position {frame.x} px {frame.y} px, focus"
                )
                since = time.monotonic()
            return time.monotonic() - since > STAYING

        until(stays, f"the window to stay at {frame}", 10.0, lambda: self.frame(number))
