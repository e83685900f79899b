"""Checks that the program replies at once while other clients misbehave, by continuous requests over its socket."""

import os
import subprocess
import threading
from pathlib import Path

from .product import Product, run_to_end

# The longest delay allowed for a reply, in addition to the start of the asking program. The environment has the factor
# for a slower build, such as one with sanitizers.
LIMIT = 0.25
SLOWNESS = float(os.environ.get("TESSEL_DESKTOP_SLOWNESS", "1"))


class Responsiveness:
    """A context manager: it sends requests until it is left, and fails then if a reply took too long. The time for which
    other processes had the processors does not count."""

    def __init__(self, product: Product, program: Path, limit: float = LIMIT):
        self.product, self.program, self.limit = product, program, limit
        self.slowest = 0.0
        self.asked = 0
        self._failure: str | None = None
        self._is_over = threading.Event()
        self._thread = threading.Thread(target=self._ask)
        # The longest start between the requests: the load at that time slows down both.
        self._start = 0.0

    def _start_takes(self) -> float:
        """The seconds for a start and an end of the program."""
        return run_to_end(self.product.session, self.program, "--version")[3]

    def _waited(self) -> float:
        """The seconds for which it was ready to run, and did not (/proc/PID/schedstat, the second number)."""
        return int(Path(f"/proc/{self.product.process.pid}/schedstat").read_text().split()[1]) / 1e9

    def _ask(self) -> None:
        while not self._is_over.is_set():
            waited = self._waited()
            try:
                status, _, errors, seconds = run_to_end(self.product.session, self.program, "--status", "--json")
            except subprocess.TimeoutExpired:
                self._failure = "it did not answer at all"
                return
            if status != 0:
                self._failure = f"it answered {status}, {errors!r}"
                return
            self.asked += 1
            self.slowest = max(self.slowest, seconds - (self._waited() - waited))
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
