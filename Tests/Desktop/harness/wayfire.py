"""A private Wayfire with two headless outputs, its session, keys and state."""

import os
import re
import shutil
import subprocess
from contextlib import suppress
from pathlib import Path

from .compositor import FIRST, HEADLESS, SECOND, CompositorDesktop
from .rect import Rect
from .session import Session
from .skipping import Skipped, require
from .waiting import STARTING, until, until_equal
from .wayfire_ipc import Connection, View, rect_of
from .wayland_keyboard import WaylandKeyboard

# Earlier versions need a graphics card.
FIRST_VERSION = (0, 10)

# The plugins that the program needs, and others that a user has; "stipc" tells the display for programs of X11.
NEEDED = ("ipc", "ipc-rules", "command")
OTHERS = ("animate", "decoration", "expo", "grid", "move", "place", "resize", "vswitch", "wm-actions", "stipc")

CONFIGURATION = """
[core]
plugins = {plugins}
preferred_decoration_mode = server
[output:HEADLESS-1]
mode = 1920x1080
position = 0,0
[output:HEADLESS-2]
mode = 1280x1024
position = 1920,0
"""


def require_wayfire() -> None:
    require("wayfire", "wayfire")
    version = subprocess.run(["wayfire", "--version"], capture_output=True, text=True, check=False).stdout
    numbers = re.match(r"(\d+)\.(\d+)", version)
    if not numbers or tuple(map(int, numbers.groups())) < FIRST_VERSION:
        raise Skipped(f"Wayfire before 0.10 does not run without a graphics card ({version.strip()})")


class WayfireDesktop(CompositorDesktop):
    title = "Wayfire"

    def __init__(self, program: Path | None = None, configuration: str = "", name: str = "wayfire", needed=NEEDED,
                 others=OTHERS):
        require_wayfire()
        super().__init__(Session(), program, name)
        self.session.environment |= {
            "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "Wayfire:wlroots", "GDK_BACKEND": "wayland",
            "QT_QPA_PLATFORM": "wayland",
        }
        self.others = others
        self.configuration = self.session.home / ".config/wayfire.ini"
        try:
            self.configure(configuration, needed)
            self.session.start_bus()
            self.start(has_ipc=set(NEEDED[:2]) <= set(needed))
        except BaseException:
            self.close()
            raise

    # The compositor

    def configure(self, text: str = "", needed=NEEDED) -> None:
        """Gives Wayfire this configuration in addition to the tests' own. A running one reads it at once."""
        plugins = " ".join((*self.others, *needed))
        self.configuration.write_text(CONFIGURATION.format(plugins=plugins) + text)

    def start(self, has_ipc: bool = True) -> None:
        self.compositor = self.session.start(
            ["wayfire", "-r", "-c", str(self.configuration)], "wayfire", HEADLESS)
        display = until(self._display, "the compositor's socket", STARTING)
        self.session.environment["WAYLAND_DISPLAY"] = display
        self.socket = self.session.runtime / f"wayfire-{display}-.socket"
        if has_ipc:
            self.connect()

    def connect(self) -> None:
        self.until_answers(Connection)
        self.session.environment["WAYFIRE_SOCKET"] = str(self.socket)
        until_equal(self.outputs, [FIRST, SECOND], "the outputs", STARTING)
        number = self.connection.ask("stipc/get_xwayland_display")["display"]
        self.session.environment["DISPLAY"] = f":{number.removeprefix(':')}"
        self.keyboard = WaylandKeyboard(str(self.session.runtime / self.session.environment["WAYLAND_DISPLAY"]))

    def restart(self) -> None:
        """Starts it again at the same sockets after it has ended."""
        self.close_connections()
        for pattern in ("wayland-*", "wayfire-*"):
            for path in self.session.runtime.glob(pattern):
                path.unlink()
        self.start()

    def _display(self) -> str | None:
        assert self.compositor.poll() is None, f"Wayfire ended with {self.compositor.returncode}"
        names = {path.name for path in self.session.runtime.glob("wayland-*") if path.suffix != ".lock"}
        return names.pop() if names else None

    # Outputs and windows

    def outputs(self) -> list[Rect]:
        return [rect_of(output["geometry"]) for output in self.connection.outputs()]

    def work_area(self, output: int = 0) -> Rect:
        """An output without its panels."""
        facts = self.connection.outputs()[output]
        area, whole = rect_of(facts["workarea"]), rect_of(facts["geometry"])
        return area._replace(x=area.x + whole.x, y=area.y + whole.y)

    def windows(self) -> list[View]:
        return self.connection.views()

    def has_focus(self, number: int) -> bool:
        return self.connection.focused() == number

    def is_in_layout(self, number: int) -> bool:
        return self.window(number).tiled

    def drag(self, number: int, step: int) -> None:
        geometry = {"x": 100 + step % 300, "y": 200, "width": 700, "height": 500}
        self.connection.ask("window-rules/configure-view", id=number, geometry=geometry)

    def place(self, number: int, frame: Rect) -> Rect:
        """Moves a window there as a person might, and focuses it. Returns its frame, which may be another one."""
        outputs = self.connection.outputs()
        output = [each for each in outputs if each["geometry"]["x"] <= frame.x][-1]
        origin = rect_of(output["geometry"])
        self.connection.ask(
            "window-rules/configure-view", id=number, output_id=output["id"],
            geometry={"x": frame.x - origin.x, "y": frame.y - origin.y, "width": frame.width, "height": frame.height},
        )
        self.connection.ask("window-rules/focus-view", id=number)
        until(lambda: self.is_at_rest(number) and self.connection.focused() == number,
              f"the window to come to rest after {frame}", 10.0, lambda: self.window(number))
        return self.frame(number)

    def is_at_rest(self, number: int) -> bool:
        """Whether what is drawn is what Wayfire wants."""
        return self.frame(number) == self.window(number).goal

    def maximize(self, number: int) -> None:
        """Maximizes a window by Wayfire's own means, as a person does."""
        view = self.window(number)
        self.connection.ask("grid/slot_c", view_id=number, output_id=view.output)
        until(lambda: self.window(number).tiled, "the window to be maximized", 10.0, lambda: self.window(number))

    def save_picture(self, name: str) -> None:
        """Saves a picture of both outputs where the tests keep pictures, if the tool for it is installed."""
        folder = os.environ.get("TESSEL_DESKTOP_PICTURES")
        if folder and shutil.which("grim"):
            Path(folder).mkdir(parents=True, exist_ok=True)
            self.session.run(["grim", f"{folder}/{self.name} {name}.png"])

    def print_failure(self) -> None:
        super().print_failure()
        with suppress(Exception):
            self.save_picture("failed")
