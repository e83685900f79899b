"""Waiting for a condition, never for a fixed time."""

import os
import time
from typing import Any, Callable

# Finer polling only takes processor time from the process that is awaited; an emulated processor has less of it.
INTERVAL = 0.25 if "TESSEL_VIRTUAL_MACHINE" in os.environ else 0.004

# Deadlines, in seconds, for an answer, the start of a desktop or an application. They allow for a busy machine and cost
# nothing unless there is a fault. A case about time itself sets its own limits.
PATIENCE = 15.0
STARTING = 60.0


class Expired(AssertionError):
    """A condition did not come true before its deadline."""


def until(condition: Callable[[], Any], what: str, seconds: float = PATIENCE, saw: Callable[[], Any] | None = None) -> Any:
    """Returns the first true value of `condition`; after the deadline fails with `what` and the result of `saw`."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            seen = f"; saw {saw()}" if saw else ""
            raise Expired(f"waited {seconds:g} s for {what}{seen}")
        time.sleep(INTERVAL)


def until_equal(read: Callable[[], Any], expected: Any, what: str, seconds: float = PATIENCE) -> None:
    """Waits until `read` returns `expected`."""
    until(lambda: read() == expected, f"{what} to be {expected}", seconds, read)


def until_unchanged(read: Callable[[], Any], looks: int, what: str, seconds: float = PATIENCE) -> Any:
    """Returns the first true value of `read` that this number of consecutive looks has seen."""
    seen: list[Any] = []

    def is_unchanged() -> bool:
        seen.append(read())
        return len(seen) >= looks and bool(seen[-1]) and all(one == seen[-1] for one in seen[-looks:])

    until(is_unchanged, f"{what} to come to rest", seconds, lambda: seen[-5:])
    return seen[-1]


def throughout(seconds: float, condition: Callable[[], Any], what: str, saw: Callable[[], Any] | None = None) -> None:
    """Watches for that time, and fails as soon as `condition` does not hold: for events that must not happen."""
    end = time.monotonic() + seconds

    def is_over() -> bool:
        assert condition(), f"not {what}" + (f"; saw {saw()}" if saw else "")
        return time.monotonic() >= end

    until(is_over, f"{what} to be watched for {seconds:g} s", seconds + 5.0)
