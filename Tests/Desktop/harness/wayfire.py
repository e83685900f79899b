"""A private Wayfire with two headless outputs, its session, keys and state."""

import os
import re
import shutil
import signal
import subprocess
import sys
from contextlib import suppress
from pathlib import Path

from .applications import Application
from .product import Product
from .rect import Rect
from .session import Session
from .skipping import Skipped, require
from .waiting import STARTING, until, until_equal
from .wayfire_ipc import Connection, View, rect_of
from .wayland_keyboard import WaylandKeyboard

FIRST, SECOND = Rect(0, 0, 1920, 1080), Rect(1920, 0, 1280, 1024)

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


class WayfireWindow:
    """A window of a started program."""

    def __init__(self, application: Application, process):
        self.application = application
        self.process = process
        self.number = 0


class WayfireDesktop:
    """A context manager, the counterpart of `Desktop`."""

    def __init__(self, program: Path | None = None, configuration: str = "", name: str = "wayfire", needed=NEEDED,
                 others=OTHERS):
        require_wayfire()
        self.program = program
        self.name = name
        self.session = Session()
        self.session.environment |= {
            "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "Wayfire:wlroots", "GDK_BACKEND": "wayland",
            "QT_QPA_PLATFORM": "wayland",
        }
        self.products: list[Product] = []
        self.keyboard: WaylandKeyboard | None = None
        self.connection: Connection | None = None
        self.others = others
        self.configuration = self.session.home / ".config/wayfire.ini"
        try:
            self.configure(configuration, needed)
            address = f"unix:path={self.session.runtime}/bus"
            self.session.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"], "bus")
            until((self.session.runtime / "bus").exists, "the session bus")
            self.session.environment["DBUS_SESSION_BUS_ADDRESS"] = address
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
            ["wayfire", "-r", "-c", str(self.configuration)], "wayfire",
            {
                "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1",
                "WLR_HEADLESS_OUTPUTS": "2",
            },
        )
        display = until(self._display, "the compositor's socket", STARTING)
        self.session.environment["WAYLAND_DISPLAY"] = display
        self.socket = self.session.runtime / f"wayfire-{display}-.socket"
        if has_ipc:
            self.connect()

    def connect(self) -> None:
        until(self._answers, "Wayfire to answer", STARTING)
        self.session.environment["WAYFIRE_SOCKET"] = str(self.socket)
        until_equal(self.outputs, [FIRST, SECOND], "the outputs", STARTING)
        number = self.connection.ask("stipc/get_xwayland_display")["display"]
        self.session.environment["DISPLAY"] = f":{number.removeprefix(':')}"
        self.keyboard = WaylandKeyboard(str(self.session.runtime / self.session.environment["WAYLAND_DISPLAY"]))

    def restart(self) -> None:
        """Starts it again at the same sockets after it has ended."""
        self._disconnect()
        for pattern in ("wayland-*", "wayfire-*"):
            for path in self.session.runtime.glob(pattern):
                path.unlink()
        self.start()

    def stop(self) -> None:
        """Ends it as a logout does."""
        self._disconnect()
        self.session.processes.end(self.compositor, signal.SIGTERM)

    def _display(self) -> str | None:
        assert self.compositor.poll() is None, f"Wayfire ended with {self.compositor.returncode}"
        names = {path.name for path in self.session.runtime.glob("wayland-*") if path.suffix != ".lock"}
        return names.pop() if names else None

    def _answers(self) -> bool:
        assert self.compositor.poll() is None, f"Wayfire ended with {self.compositor.returncode}"
        try:
            self.connection = Connection(self.socket)
        except OSError:
            return False
        return True

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

    def window(self, number: int) -> View:
        return next(view for view in self.windows() if view.number == number)

    def frame(self, number: int) -> Rect:
        return self.window(number).frame

    def open(self, application: Application, *options: str) -> WayfireWindow:
        """Starts an application and waits until its window is there and has the focus."""
        running = self.launch_application(application, *options)
        self.wait_for(running)
        until(lambda: self.connection.focused() == running.number, f"{application.name} to have the focus")
        return running

    def launch_application(self, application: Application, *options: str) -> WayfireWindow:
        if application.package:
            require(application.command[0], application.package)
        process = self.session.start([*application.command, *options], application.name, application.environment)
        return WayfireWindow(application, process)

    def wait_for(self, running: WayfireWindow, seconds: float = STARTING) -> int:
        def appeared() -> View | None:
            assert running.process.poll() is None, f"{running.application.name} ended"
            return next((view for view in self.windows() if view.process == running.process.pid), None)

        running.number = until(appeared, f"a window of {running.application.name}", seconds, self.windows).number
        return running.number

    def end(self, running: WayfireWindow) -> None:
        self.session.processes.end(running.process, signal.SIGKILL)
        until(lambda: all(view.number != running.number for view in self.windows()), "the window to be gone")

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

    def holds_frame(self, number: int, frame: Rect, what: str, seconds: float = 5.0) -> None:
        until_equal(lambda: self.frame(number), frame, what, seconds)

    # The program under test

    def launch(self, *options: str, environment: dict[str, str] | None = None) -> Product:
        product = Product(self.session, self.program, *options, environment=environment)
        self.products.append(product)
        product.until_ready()
        return product

    def press(self, product: Product, action: str) -> None:
        """Presses an action's shortcut and waits until the program has handled it."""
        self.keyboard.press(action)
        product.until_at_rest()

    def save_picture(self, name: str) -> None:
        """Saves a picture of both outputs where the tests keep pictures, if the tool for it is installed."""
        folder = os.environ.get("TESSEL_DESKTOP_PICTURES")
        if folder and shutil.which("grim"):
            Path(folder).mkdir(parents=True, exist_ok=True)
            self.session.run(["grim", f"{folder}/{self.name} {name}.png"])

    # End

    def __enter__(self) -> "WayfireDesktop":
        return self

    def __exit__(self, kind, value, trace) -> None:
        if kind is not None:
            print(self.session.log_text(), file=sys.stderr)
            with suppress(Exception):
                self.save_picture("failed")
            for product in self.products:
                print(f"--- statuses: {product.statuses}", file=sys.stderr)
        try:
            if kind is None:
                for product in self.products:
                    if product.process.poll() is None:
                        product.terminate()
        finally:
            self.close()

    def _disconnect(self) -> None:
        for connection in (self.keyboard, self.connection):
            if connection is not None:
                connection.close()
        self.keyboard = self.connection = None

    def close(self) -> None:
        for product in self.products:
            product.close()
        self._disconnect()
        self.session.close()
