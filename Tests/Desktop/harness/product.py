"""The program under test from outside: its process, its messages to the service manager, its output."""

import os
import re
import signal
import socket
import subprocess
import time
from contextlib import suppress
from pathlib import Path

from .session import Session
from .waiting import PATIENCE, Expired, until

# The system calls, by number on this processor, in which a process waits for events. The second set is that of the
# toolkit's loop, which runs once the window was opened; a loop waits for several descriptors, a reply comes through
# one.
WAITING_CALLS = {"x86_64": {"232", "281", "441"}, "aarch64": {"22", "441"}}[os.uname().machine]
POLLING_CALLS = {"x86_64": {"7", "271"}, "aarch64": {"73"}}[os.uname().machine]
# A timer's remaining time in seconds and nanoseconds; zeros for one that is not set.
TIMER = re.compile(r"^it_value: \((\d+), (\d+)\)", re.MULTILINE)
SLEEPS = re.compile(r"^voluntary_ctxt_switches:\s*(\d+)", re.MULTILINE)
# Between two attempts of the same action, in seconds, with the leeway of the timer.
LONGEST_PAUSE = 1.7


class Product:
    def __init__(self, session: Session, program: Path, *options: str, environment: dict[str, str] | None = None):
        self.session = session
        self._count = len(list(session.runtime.glob("notify-*")))
        address = session.runtime / f"notify-{self._count}"
        self.notifications = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM | socket.SOCK_NONBLOCK)
        self.notifications.bind(str(address))
        self.ready = False
        self.statuses: list[str] = []
        self._errors = session.logs / f"product-{self._count}.stderr.log"
        with open(self._errors, "wb") as errors:
            self.process = session.start(
                [str(program), *options], f"product-{self._count}",
                {"NOTIFY_SOCKET": str(address), **(environment or {})}, stderr=errors,
            )

    # Messages

    def _listen(self) -> None:
        while True:
            try:
                message = self.notifications.recv(4096).decode()
            except BlockingIOError:
                return
            for line in message.splitlines():
                self.ready = self.ready or line == "READY=1"
                if line.startswith("STATUS="):
                    self.statuses.append(line.removeprefix("STATUS="))

    @property
    def status(self) -> str | None:
        """The last status that it reported, or None."""
        self._listen()
        return self.statuses[-1] if self.statuses else None

    def _alive(self) -> None:
        assert self.process.poll() is None, f"the program ended with {self.process.returncode}: {self.errors()}"

    def until_ready(self, seconds: float = PATIENCE) -> None:
        def reported() -> bool:
            self._listen()
            self._alive()
            return self.ready

        until(reported, "the program to be ready", seconds, lambda: f"statuses {self.statuses}, {self.errors()!r}")

    def until_status(self, wanted: str, seconds: float = PATIENCE) -> None:
        def reported() -> bool:
            now = self.status
            self._alive()
            return now == wanted

        until(reported, f"status {wanted!r}", seconds, lambda: f"{self.statuses}, {self.errors()!r}")

    def errors(self) -> str:
        return self._errors.read_text(errors="replace")

    # Activity

    def waits_for_events(self) -> bool:
        """Whether it is idle: it sleeps in the system call in which an event loop sleeps."""
        call = Path(f"/proc/{self.process.pid}/syscall").read_text().split()
        return call[0] in WAITING_CALLS or call[0] in POLLING_CALLS and int(call[2], 16) > 1

    def until_at_rest(self, seconds: float = PATIENCE) -> None:
        """Returns when it has handled every event delivered before. (A delivered event wakes it at once.)"""
        until(self.waits_for_events, "the program to be at rest", seconds, self._doing)

    def until_no_retry(self, seconds: float = PATIENCE) -> None:
        """Returns when it is at rest and no retry of an action or a rule is pending. A retry moves a window again that
        is put back meanwhile exactly where the action found it, or that leaves the place of its rule."""

        def has_none() -> bool:
            # A timer that expires after the first look wakes the program, which may set it again before the last one.
            sleeps = self._sleeps()
            is_unset = self.waits_for_events() and not self._has_timer_due()
            return is_unset and self.waits_for_events() and self._sleeps() == sleeps

        until(has_none, "no retry to be pending", seconds, self._doing)

    def _sleeps(self) -> str:
        """How often it has gone to sleep: it has not run between two equal numbers at which it sleeps."""
        return SLEEPS.search(Path(f"/proc/{self.process.pid}/status").read_text())[1]

    def _has_timer_due(self) -> bool:
        """Whether a timer of its event loop is due before the last retry of an action would be."""
        for descriptor in Path(f"/proc/{self.process.pid}/fdinfo").iterdir():
            # One that was closed since has no text.
            with suppress(FileNotFoundError):
                found = TIMER.search(descriptor.read_text())
                if found and 0 < int(found[1]) + int(found[2]) / 1e9 < LONGEST_PAUSE:
                    return True
        return False

    def _doing(self) -> str:
        return Path(f"/proc/{self.process.pid}/syscall").read_text().strip()

    # End

    def ended(self, seconds: float = 5.0) -> int:
        """Waits for its end. Returns its exit status."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Expired(f"the program did not end within {seconds:g} s") from None

    def terminate(self, silently: bool = True) -> None:
        """Ends it as a session does, and checks that it exits with 0, and has printed nothing if `silently`."""
        os.kill(self.process.pid, signal.SIGTERM)
        status = self.ended()
        assert status == 0, f"ended with {status} on SIGTERM: {self.errors()}"
        assert not silently or self.errors() == "", f"printed {self.errors()!r}"

    def close(self) -> None:
        self.notifications.close()


def run_to_end(session: Session, program: Path, *options: str, seconds: float = 5.0, environment=None, prefix=()):
    """Starts the program in a case where it must end by itself. Returns exit status, standard output, standard error,
    seconds.

    `prefix`: the command that starts it in turn.
    """
    started = time.monotonic()
    variables = {**session.environment, **(environment or {})}
    done = subprocess.run(
        [*prefix, str(program), *options], stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=seconds,
        check=False,
        env={name: value for name, value in variables.items() if value is not None},
    )
    return done.returncode, done.stdout, done.stderr, time.monotonic() - started
