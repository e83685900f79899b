"""Runs a case, and again if it failed and the environment allows a second try. A second try leaves a trace.

TESSEL_DESKTOP_TRIES is the number of tries. TESSEL_DESKTOP_SECOND_TRIES names a folder: every case that passed only at
another try leaves a file of its name there, with the end of the last failed try's output. TESSEL_DESKTOP_SECONDS is the
longest time for one try: a call without a deadline of its own, to a server that hangs, fails then.
"""

import io
import os
import signal
import sys
import traceback
from contextlib import contextmanager, redirect_stderr, redirect_stdout
from pathlib import Path
from typing import Callable, TextIO

from .skipping import Skipped

PASSED, FAILED, CANNOT_RUN = 0, 1, 77
# Lengths of the traceback and of the logs in that file.
TRACE_LINES, LOG_LINES = 8, 30
# In seconds. The end of a failed try may hang as well: the interruption repeats after this time.
ENDING = 10.0


class Hung(BaseException):
    """A try took too long. Code that deals with failures must not take this for one of them, so it is no Exception."""


@contextmanager
def limited():
    """Interrupts the block, wherever it waits, when its time is over."""
    seconds = float(os.environ.get("TESSEL_DESKTOP_SECONDS", "0"))

    def interrupt(*_) -> None:
        raise Hung(f"the case did not end within {seconds:g} s")

    former = signal.signal(signal.SIGALRM, interrupt)
    signal.setitimer(signal.ITIMER_REAL, seconds, ENDING)
    try:
        yield
    finally:
        signal.setitimer(signal.ITIMER_REAL, 0)
        signal.signal(signal.SIGALRM, former)


class Copying(io.TextIOBase):
    """Passes output on and keeps a copy."""

    def __init__(self, output: TextIO):
        self.output = output
        self.kept: list[str] = []

    def write(self, text: str) -> int:
        self.kept.append(text)
        return self.output.write(text)

    def flush(self) -> None:
        self.output.flush()


def end_of(text: str, count: int) -> str:
    return "".join(f"{line}\n" for line in text.splitlines()[-count:])


def try_case(name: str, case: Callable[[], None]) -> int:
    """The exit status of the case's last try."""
    tries = int(os.environ.get("TESSEL_DESKTOP_TRIES", "1"))
    trace = seen = ""
    for attempt in range(1, tries + 1):
        printed, complaints = Copying(sys.stdout), Copying(sys.stderr)
        try:
            with redirect_stdout(printed), redirect_stderr(complaints), limited():
                case()
        except Skipped as reason:
            print(f"SKIPPED: {reason}")
            return CANNOT_RUN
        except (Exception, Hung):
            trace = traceback.format_exc()
            print(trace, end="", file=sys.stderr)
            print(f"{name}: failed at try {attempt} of {tries}")
            seen = "".join(printed.kept + complaints.kept)
        else:
            if attempt > 1:
                leave_trace(name, trace, seen)
            print(f"{name}: passed at try {attempt}")
            return PASSED
    return FAILED


def leave_trace(name: str, trace: str, logs: str) -> None:
    folder = os.environ.get("TESSEL_DESKTOP_SECOND_TRIES")
    if not folder:
        return
    Path(folder).mkdir(parents=True, exist_ok=True)
    Path(folder, name).write_text(end_of(trace, TRACE_LINES) + end_of(logs, LOG_LINES))
