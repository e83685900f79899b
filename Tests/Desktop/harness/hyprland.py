"""A Hyprland of its own on the graphics device of a virtual machine, its session, keys and state."""

import json
import os
import shutil
import socket
import sys
import tempfile
import time
from pathlib import Path
from typing import Any, NamedTuple

from PIL import Image

from .applications import Application
from .machine_keyboard import MachineKeyboard
from .product import Product, run_to_end
from .rect import Rect
from .session import Session
from .skipping import Skipped, require
from .waiting import until, until_equal

# The machine is emulated, so each step takes up to fifty times as long as on a real one.
PATIENCE = 60.0
STARTING = 600.0

# A program that still handles an earlier request may change its size until then.
STAYING = 2.0

# All effects that cost time to draw are switched off. Gaps and borders are Hyprland's own.
CONFIGURATION = """
hl.monitor({ output = "", mode = "preferred", position = "auto", scale = "1" })
hl.config({
    animations = { enabled = false },
    decoration = { blur = { enabled = false }, shadow = { enabled = false } },
    ecosystem = { no_update_news = true, no_donation_nag = true },
    input = { follow_mouse = 0 },
    misc = {
        disable_hyprland_logo = true, disable_splash_rendering = true, disable_hyprland_guiutils_check = true,
        disable_watchdog_warning = true,
    },
})
"""


class Window(NamedTuple):
    address: str
    process: int
    title: str
    # With its border.
    frame: Rect
    floating: bool
    focused: bool
    # 1 is maximized, 2 is fullscreen.
    mode: int


class HyprlandDesktop:
    """A context manager, the counterpart of `Desktop`."""

    def __init__(self, program: Path | None = None, configuration: str = "", name: str = "hyprland"):
        require("Hyprland", "hyprland")
        require("seatd", "seatd")
        # It would take the screen and the keyboard from the user of a real machine.
        if "TESSEL_VIRTUAL_MACHINE" not in os.environ:
            raise Skipped("it needs a graphics device of its own; ./test --vm runs it in a virtual machine")
        self.program = program
        self.name = name
        self.products: list[Product] = []
        self.keyboard: MachineKeyboard | None = None
        self.session = Session()
        # The path of Hyprland's socket, with its long name for itself, must fit into an address.
        self.session.runtime = Path(tempfile.mkdtemp(dir="/run"))
        self.session.environment |= {
            "XDG_RUNTIME_DIR": str(self.session.runtime), "XDG_SESSION_TYPE": "wayland",
            "XDG_CURRENT_DESKTOP": "Hyprland", "GDK_BACKEND": "wayland", "QT_QPA_PLATFORM": "wayland",
            "LIBSEAT_BACKEND": "seatd", "HYPRLAND_NO_RT": "1",
        }
        # The machine's graphics device has Mesa's drawing done outside, by the real processor.
        del self.session.environment["LIBGL_ALWAYS_SOFTWARE"]
        self.session.configure(".config/hypr/hyprland.lua", CONFIGURATION + configuration)
        try:
            self._start()
            self._start_bus()
            self.keyboard = MachineKeyboard()
        except BaseException as failure:
            if not isinstance(failure, Skipped):
                self._print_logs()
            self.close()
            raise

    # The compositor

    def _start(self) -> None:
        seat = Path("/run/seatd.sock")
        seat.unlink(missing_ok=True)
        self.session.start(["/usr/sbin/seatd"], "seatd")
        until(seat.exists, "the seat", PATIENCE)
        # The option is its way to say that root may start it.
        self.compositor = self.session.start(["Hyprland", "--i-am-really-stupid"], "hyprland")
        until(self._answers, "Hyprland to answer", STARTING)
        self.session.environment["HYPRLAND_INSTANCE_SIGNATURE"] = self._instance().name
        (display,) = {path.name for path in self.session.runtime.glob("wayland-*") if path.suffix != ".lock"}
        self.session.environment["WAYLAND_DISPLAY"] = display
        until(lambda: self.read("monitors"), "a monitor", STARTING)

    def _instance(self) -> Path:
        (folder,) = (self.session.runtime / "hypr").iterdir()
        return folder

    def _answers(self) -> bool:
        assert self.compositor.poll() is None, f"Hyprland ended with {self.compositor.returncode}"
        try:
            return "configProvider" in self.ask("status")
        except (OSError, ValueError):
            return False

    def ask(self, request: str) -> str:
        """One request to a connection, which Hyprland closes after the answer."""
        with socket.socket(socket.AF_UNIX) as connection:
            connection.settimeout(PATIENCE)
            connection.connect(str(self._instance() / ".socket.sock"))
            connection.sendall(request.encode())
            answer = b""
            while part := connection.recv(65536):
                answer += part
        return answer.decode()

    @property
    def socket(self) -> str:
        """The path of the Wayland socket."""
        return str(self.session.runtime / self.session.environment["WAYLAND_DISPLAY"])

    def configure(self, addition: str) -> None:
        """Changes the configuration, as a user does with an editor, and has it read."""
        self.session.configure(".config/hypr/hyprland.lua", CONFIGURATION + addition)
        answer = self.ask("reload")
        assert answer == "ok", answer

    def read(self, what: str) -> Any:
        return json.loads(self.ask(f"j/{what}"))

    def command(self, code: str) -> None:
        answer = self.ask(f"eval {code}")
        assert answer == "ok", f"{code}: {answer}"

    def _start_bus(self) -> None:
        address = f"unix:path={self.session.runtime}/bus"
        self.session.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"], "bus")
        until((self.session.runtime / "bus").exists, "the session bus", PATIENCE)
        self.session.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    # Monitors and windows

    def work_area(self, number: int = 0) -> Rect:
        """The monitor with this number without what is reserved on it."""
        (monitor,) = [each for each in self.read("monitors") if each["id"] == number]
        left, top, right, bottom = monitor["reserved"]
        width, height = (round(monitor[part] / monitor["scale"]) for part in ("width", "height"))
        size = (height, width) if monitor["transform"] % 2 else (width, height)
        return Rect(monitor["x"], monitor["y"], *size).grown(-left, -right, -top, -bottom)

    def add_monitor(self) -> None:
        """Adds one without a screen. Its number is 1, its name HEADLESS-1."""
        answer = self.ask("output create headless")
        assert answer == "ok", answer
        until(lambda: len(self.read("monitors")) == 2, "the second monitor", STARTING)

    def set_monitor(self, name: str, mode: str, position: str, scale: str, transform: int) -> None:
        self.command(
            f'hl.monitor({{output="{name}",mode="{mode}",position="{position}",scale="{scale}",'
            f"transform={transform}}})")

        def changed() -> bool:
            (monitor,) = [each for each in self.read("monitors") if each["name"] == name]
            place = f"{monitor['x']}x{monitor['y']}"
            return (place, monitor["scale"], monitor["transform"]) == (position, float(scale), transform)

        until(changed, f"the monitor {name} to change", PATIENCE, lambda: self.read("monitors"))

    def windows(self) -> list[Window]:
        found = []
        for client in self.read("clients"):
            if client["mapped"]:
                border = self.read(f"getprop address:{client['address']} border_size").get("border_size", 0)
                box = Rect(*client["at"], *client["size"])
                found.append(Window(
                    client["address"], client["pid"], client["title"], box.grown(border, border, border, border),
                    client["floating"], client["focusHistoryID"] == 0, client["fullscreen"],
                ))
        return found

    def window(self, address: str) -> Window:
        return next(window for window in self.windows() if window.address == address)

    def frame(self, address: str) -> Rect:
        return self.window(address).frame

    def open(self, application: Application) -> str:
        """Starts an application and waits until its window is there and has the focus. Returns the address."""
        address = self.launch_application(application)
        until(lambda: self.window(address).focused, f"{application.name} to have the focus", PATIENCE)
        return address

    def launch_application(self, application: Application) -> str:
        if application.package:
            require(application.command[0], application.package)
        process = self.session.start([*application.command], application.name, application.environment)

        def appeared() -> Window | None:
            assert process.poll() is None, f"{application.name} ended"
            return next((window for window in self.windows() if window.process == process.pid), None)

        return until(appeared, f"a window of {application.name}", STARTING, self.windows).address

    def place(self, address: str, frame: Rect) -> None:
        """Takes a window out of the layout and moves it there, as a person might. Returns when it stays there."""
        since = time.monotonic()

        def stays() -> bool:
            nonlocal since
            if self.frame(address) != frame:
                self.dispatch("float", 'action="on"', address)
                border = self._border(address)
                box = frame.grown(-border, -border, -border, -border)
                # A new size keeps the centre, so the position comes last.
                self.dispatch("resize", f"x={box.width},y={box.height}", address)
                self.dispatch("move", f"x={box.x},y={box.y}", address)
                since = time.monotonic()
            return time.monotonic() - since > STAYING

        until(stays, f"the window to stay at {frame}", PATIENCE, lambda: self.frame(address))

    def dispatch(self, name: str, arguments: str, address: str) -> None:
        """Has a dispatcher act on a window, for a user who has its key."""
        arguments += "," if arguments else ""
        self.command(f'hl.dispatch(hl.dsp.window.{name}({{{arguments}window="address:{address}"}}))')

    def tile(self, address: str) -> Rect:
        """Puts a window into the layout. Returns its frame there."""
        self.dispatch("float", 'action="off"', address)
        until(lambda: not self.window(address).floating, "the window to be tiled", PATIENCE)
        return self.rested_frame(address)

    def rested_frame(self, address: str) -> Rect:
        """The frame of a window once that stays for a while."""
        seen, since = self.frame(address), time.monotonic()

        def stays() -> bool:
            nonlocal seen, since
            present = self.frame(address)
            if present != seen:
                seen, since = present, time.monotonic()
            return time.monotonic() - since > STAYING

        until(stays, "the window to rest", PATIENCE, lambda: seen)
        return seen

    def _border(self, address: str) -> int:
        return self.read(f"getprop address:{address} border_size")["border_size"]

    def holds_frame(self, address: str, frame: Rect, what: str) -> None:
        until_equal(lambda: self.frame(address), frame, what, PATIENCE)

    def picture(self, what: str) -> Image.Image:
        """What the monitor shows; it is kept with the pictures of the other tests."""
        require("grim", "grim")
        folder = Path(os.environ.get("TESSEL_DESKTOP_PICTURES", self.session.directory))
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / f"{self.name}.{what}.png"
        self.session.run(["grim", str(path)])
        return Image.open(path).convert("RGB")

    # The program under test

    def launch(self, *options: str, status: str = "Active") -> Product:
        product = Product(self.session, self.program, *options)
        self.products.append(product)
        product.until_ready(PATIENCE)
        product.until_status(status, PATIENCE)
        return product

    def ask_program(self, *options: str, status: int = 0) -> str:
        """Starts the program once more with these options, which ends with that status. Returns what it printed."""
        ended, output, errors, _ = run_to_end(self.session, self.program, *options, seconds=PATIENCE)
        assert ended == status, f"{options} ended with {ended}: {errors}"
        return output

    # End

    def __enter__(self) -> "HyprlandDesktop":
        return self

    def __exit__(self, kind, value, trace) -> None:
        if kind is not None:
            self._print_logs()
            for product in self.products:
                print(f"--- statuses: {product.statuses}", file=sys.stderr)
        self.close()

    def _print_logs(self) -> None:
        print(self.session.log_text(), file=sys.stderr)
        for log in self.session.runtime.glob("hypr/*/hyprland.log"):
            lines = [line[:200] for line in log.read_text(errors="replace").splitlines()[-40:]]
            print(f"--- {log.name}", *lines, sep="\n", file=sys.stderr)

    def close(self) -> None:
        for product in self.products:
            product.close()
        if self.keyboard is not None:
            self.keyboard.close()
        self.session.close()
        shutil.rmtree(self.session.runtime)
