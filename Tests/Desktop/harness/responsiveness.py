"""Whether the program answers at once while others misbehave, found out by asking it over its socket all the time."""

import os
import subprocess
import threading
from pathlib import Path

from .product import run_to_end
from .session import Session

# For how long the program may be held up, beside what starting the one that asks takes. How many times as long
# everything takes for a program that was built to be slow is in the environment.
LIMIT = 0.25
SLOWNESS = float(os.environ.get("TESSEL_DESKTOP_SLOWNESS", "1"))


class Responsiveness:
    """A context manager: asks again and again until it is left, and fails then if an answer took too long."""

    def __init__(self, session: Session, program: Path, limit: float = LIMIT):
        self.session, self.program, self.limit = session, program, limit
        self.slowest = 0.0
        self.asked = 0
        self._failure: str | None = None
        self._is_over = threading.Event()
        self._thread = threading.Thread(target=self._ask)
        # The longest start, in between the questions: what goes on meanwhile takes time from both.
        self._start = 0.0

    def _start_takes(self) -> float:
        """The seconds that it takes to start the program and end it again."""
        return run_to_end(self.session, self.program, "--version")[3]

    def _ask(self) -> None:
        while not self._is_over.is_set():
            try:
                status, _, errors, seconds = run_to_end(self.session, self.program, "--status", "--json")
            except subprocess.TimeoutExpired:
                self._failure = "it did not answer at all"
                return
            if status != 0:
                self._failure = f"it answered {status}, {errors!r}"
                return
            self.asked += 1
            self.slowest = max(self.slowest, seconds)
            self._start = max(self._start, self._start_takes())

    def __enter__(self) -> "Responsiveness":
        self._thread.start()
        return self

    def __exit__(self, kind, value, trace) -> None:
        self._is_over.set()
        self._thread.join()
        if kind is not None:
            return
        allowed = self.limit * SLOWNESS + self._start
        assert self._failure is None, f"asked {self.asked} times, then {self._failure}"
        assert self.asked > 0, "nothing was asked"
        assert self.slowest < allowed, f"an answer took {self.slowest:.3f} s, {allowed:.3f} s are allowed"
