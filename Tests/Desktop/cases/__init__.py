"""The test cases, by name. Each takes the path of the program under test."""

from pathlib import Path
from typing import Callable

CASES: dict[str, Callable[[Path], None]] = {}


def case(name: str) -> Callable[[Callable[[Path], None]], Callable[[Path], None]]:
    """Adds a case; importing the modules of this package fills the table."""

    def add(function: Callable[[Path], None]) -> Callable[[Path], None]:
        assert name not in CASES, f"two cases are called {name}"
        CASES[name] = function
        return function

    return add


def case_for_each(prefix: str, values):
    """Adds a case for each value; the function takes the value after the program."""

    def add(function):
        for value in values:
            case(f"{prefix}.{value}")(lambda program, value=value: function(program, value))
        return function

    return add
