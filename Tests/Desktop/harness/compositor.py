"""What a private sway and a private Wayfire share: headless outputs, an IPC, and windows known by their numbers."""

import signal
from pathlib import Path
from typing import Callable

from .applications import Application
from .private_desktop import PrivateDesktop
from .product import run_to_end
from .rect import Rect
from .session import Session
from .skipping import require
from .waiting import STARTING, until, until_equal
from .wayland_keyboard import WaylandKeyboard

# Two outputs, side by side.
FIRST, SECOND = Rect(0, 0, 1920, 1080), Rect(1920, 0, 1280, 1024)
HEADLESS = {
    "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_HEADLESS_OUTPUTS": "2",
}


class ApplicationWindow:
    """A window of a started program."""

    def __init__(self, application: Application, process):
        self.application = application
        self.process = process
        self.number = 0


class CompositorDesktop(PrivateDesktop):
    """The counterpart of `Desktop`; a subclass knows one compositor."""

    # How people call it.
    title = ""

    def __init__(self, session: Session, program: Path | None, name: str) -> None:
        super().__init__()
        self.session = session
        self.program = program
        self.name = name
        self.keyboard: WaylandKeyboard | None = None
        self.connection = None
        self.socket: Path | None = None

    def windows(self) -> list:
        raise NotImplementedError

    def has_focus(self, number: int) -> bool:
        raise NotImplementedError

    def is_in_layout(self, number: int) -> bool:
        """Whether the compositor lays the window out."""
        raise NotImplementedError

    def drag(self, number: int, step: int) -> None:
        """Moves a floating window a little."""
        raise NotImplementedError

    # The program under test

    def ask_program(self, *options: str) -> tuple[int, str, str, float]:
        """Starts the program once more with these options; see `run_to_end`."""
        return run_to_end(self.session, self.program, *options, prefix=self.session.prefix)

    # The compositor

    def until_answers(self, connect: Callable) -> None:
        """Connects to the compositor's socket."""

        def answers() -> bool:
            assert self.compositor.poll() is None, f"{self.title} ended with {self.compositor.returncode}"
            try:
                self.connection = connect(self.socket)
            except OSError:
                return False
            return True

        until(answers, f"{self.title} to answer", STARTING)

    def stop(self) -> None:
        """Ends it as a logout does."""
        self.close_connections()
        self.session.processes.end(self.compositor, signal.SIGTERM)

    # Windows

    def window(self, number: int):
        return next(window for window in self.windows() if window.number == number)

    def frame(self, number: int) -> Rect:
        return self.window(number).frame

    def open(self, application: Application, *options: str) -> ApplicationWindow:
        """Starts an application and waits until its window is there and has the focus."""
        running = self.launch_application(application, *options)
        self.wait_for(running)
        until(lambda: self.has_focus(running.number), f"{application.name} to have the focus")
        return running

    def launch_application(self, application: Application, *options: str) -> ApplicationWindow:
        if application.package:
            require(application.command[0], application.package)
        process = self.session.start([*application.command, *options], application.name, application.environment)
        return ApplicationWindow(application, process)

    def wait_for(self, running: ApplicationWindow, seconds: float = STARTING) -> int:
        def appeared():
            assert running.process.poll() is None, f"{running.application.name} ended"
            return next((window for window in self.windows() if window.process == running.process.pid), None)

        running.number = until(appeared, f"a window of {running.application.name}", seconds, self.windows).number
        return running.number

    def end(self, running: ApplicationWindow) -> None:
        self.session.processes.end(running.process, signal.SIGKILL)
        until(lambda: all(window.number != running.number for window in self.windows()), "the window to be gone")

    def holds_frame(self, number: int, frame: Rect, what: str, seconds: float = 5.0) -> None:
        until_equal(lambda: self.frame(number), frame, what, seconds)

    # End

    def close_connections(self) -> None:
        for connection in (self.keyboard, self.connection):
            if connection is not None:
                connection.close()
        self.keyboard = self.connection = None
