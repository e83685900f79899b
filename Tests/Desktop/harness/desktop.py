"""A whole desktop for one test: started, used, and ended again."""

import os
import signal
import sys
from pathlib import Path

from Xlib.error import ConnectionClosedError

from . import servers
from .applications import Application
from .hanging import hanging
from .keyboard import Keyboard
from .picture import save_screen
from .private_desktop import PrivateDesktop
from .product import Product
from .rect import Rect
from .session import Session
from .skipping import require
from .waiting import STARTING, until, until_equal
from .window_managers import WINDOW_MANAGERS, WindowManager
from .windows import Windows


class RunningApplication:
    def __init__(self, application: Application, process, window: int):
        self.application = application
        self.process = process
        self.window = window


class Desktop(PrivateDesktop):
    """A server, a session, keys and eyes; window manager, applications and program are started by the test.

    A context manager: leaving it ends everything, and after a failure prints the logs and saves a picture of the
    screen where TESSEL_DESKTOP_PICTURES names a folder.
    """

    def __init__(self, program: Path | None = None, server=servers.virtual, name: str = "desktop"):
        super().__init__()
        self.program = program
        self.name = name
        self.session = Session()
        try:
            self.server = server(self.session)
            self.session.enter_display(self.server.display)
            self.windows = Windows(self.server.display)
            # Independent of the machine's own keyboard: the key codes are those of desktops.
            self.session.run(["setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "us", "-option", ""])
            self.keyboard = Keyboard(self.server.display)
        except BaseException:
            self.session.close()
            raise
        self.manager: WindowManager | None = None
        self.manager_process = None

    # Window manager

    def start_window_manager(self, name: str, keys_free: bool = True, *options: str) -> None:
        """Starts it and waits until it has settled: it has published its initial properties, and it answers."""
        manager = WINDOW_MANAGERS[name]
        require(manager.program, manager.package)
        if manager.configure:
            manager.configure(self.session)
        if keys_free and manager.free_keys:
            manager.free_keys(self.session)
        self.manager = manager
        self.manager_process = self.session.start([*manager.command, *options], name, manager.environment)
        self.until_settled()

    def until_settled(self, seconds: float = STARTING) -> None:
        manager, windows = self.manager, self.windows

        def manages() -> bool:
            assert self.manager_process.poll() is None, f"{manager.name} ended with {self.manager_process.returncode}"
            check = windows.cardinals(windows.root, "_NET_SUPPORTING_WM_CHECK")
            if not check or windows.cardinals(windows.window(check[0]), "_NET_SUPPORTING_WM_CHECK") != check:
                return False
            published = ("_NET_SUPPORTED", "_NET_NUMBER_OF_DESKTOPS")
            if any(windows.cardinals(windows.root, name) is None for name in published):
                return False
            return not manager.composites or windows.composited()

        until(manages, f"{manager.name} to manage the screen", seconds)
        # Some window managers announce themselves before they listen, and lose requests in between.
        until(lambda: windows.answers(0.1), f"{manager.name} to answer", seconds)
        if manager.bar:
            until_equal(windows.work_area, self.visible_frame(), f"work area above {manager.name}'s bar")

    def stop_window_manager(self, number: int = signal.SIGTERM) -> None:
        self.session.processes.end(self.manager_process, number)
        self.manager = self.manager_process = None

    def window_manager_hangs(self):
        """A context manager: the window manager does nothing in its block."""
        return hanging(self.manager_process.pid, self.server.display)

    def replace_window_manager(self, name: str) -> None:
        """Lets another window manager replace the present one, which ends."""
        former = self.manager_process
        self.start_window_manager(name, True, "--replace")
        until(lambda: former.poll() is not None, "the replaced window manager to end")
        # The replies so far may be those of the former window manager.
        self.until_settled()

    # Applications

    def start(self, application: Application, *options: str) -> RunningApplication:
        """Starts an application; `wait_for` finds its window."""
        if application.package:
            require(application.command[0], application.package)
        process = self.session.start([*application.command, *options], application.name, application.environment)
        return RunningApplication(application, process, 0)

    def wait_for(self, running: RunningApplication, seconds: float = STARTING) -> int:
        """Waits until the window is managed and its position no longer changes. Returns the window."""
        windows, process = self.windows, running.process

        def appeared():
            assert process.poll() is None, f"{running.application.name} ended with {process.returncode}"
            return windows.of_process(process.pid)

        running.window = until(
            appeared, f"a window of {running.application.name}, process {process.pid}", seconds,
            lambda: {window: windows.process_of(window) for window in windows.managed()},
        )
        if running.application.draws_shadow and self.manager.composites:
            until(
                lambda: any(windows.extents(running.window, "_GTK_FRAME_EXTENTS")),
                f"the shadow of {running.application.name}",
            )
        windows.fence()
        return running.window

    def open(self, application: Application, *options: str) -> RunningApplication:
        """Starts an application and brings its window to the front."""
        running = self.start(application, *options)
        self.wait_for(running)
        self.windows.activate(running.window)
        return running

    def adopt(self, running: RunningApplication) -> None:
        """Waits until a newly started window manager has taken over a decorated window, and gives it the focus.

        A former window manager's properties may still be there, so they do not count.
        """
        until(lambda: self.windows.is_decorated(running.window), f"{self.manager.name} to decorate the window")
        self.wait_for(running)
        self.windows.activate(running.window)

    def end(self, running: RunningApplication) -> None:
        self.session.processes.end(running.process, signal.SIGKILL)

    # The program under test

    def press(self, product: Product, action: str) -> None:
        """Presses an action's shortcut and waits until program and window manager have handled it."""
        super().press(product, action)
        self.windows.fence()

    # Visible areas

    def visible_frame(self) -> Rect:
        """The single screen without the window manager's bar."""
        screen = self.windows.root.get_geometry()
        return Rect(0, 0, screen.width, screen.height - (self.manager.bar if self.manager else 0))

    def holds_frame(self, window: int, frame: Rect, what: str, seconds: float = 2.0) -> None:
        until_equal(lambda: self.windows.frame(window), frame, what, seconds)

    # End

    def print_failure(self) -> None:
        super().print_failure()
        folder = os.environ.get("TESSEL_DESKTOP_PICTURES")
        if folder and self.server.process.poll() is None:
            path = Path(folder, f"{self.name}.png")
            path.parent.mkdir(parents=True, exist_ok=True)
            save_screen(self.server.display, path)
            print(f"--- picture: {path}", file=sys.stderr)

    def close_connections(self) -> None:
        for connection in (self.windows, self.keyboard):
            try:
                connection.close()
            except ConnectionClosedError:
                # Some tests end the server first.
                pass

    def close(self) -> None:
        super().close()
        self.server.clear_away()
