"""What the measurements share. They run on the desktops that the tests build: fresh server, session and home each time."""

import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
BUILD = ROOT / "build" / "benchmarks"
PROGRAM = BUILD / "Tessel" / "tessel"

sys.path.insert(0, str(ROOT / "Tests" / "Desktop"))


def probe(name: str) -> str:
    """The path of one of the programs that measure."""
    return str(BUILD / "Benchmarks" / name)
