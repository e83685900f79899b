"""The common parts of the measurements.

They run on the desktops that the tests build: a fresh server, session and home each time. TESSEL_PROGRAM in the
environment names another program to measure than the one of build/benchmarks.
"""

import os
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
BUILD = ROOT / "build" / "benchmarks"
PROGRAM = Path(os.environ.get("TESSEL_PROGRAM", BUILD / "Tessel" / "tessel")).resolve()

sys.path.insert(0, str(ROOT / "Tests" / "Desktop"))


def probe(name: str) -> str:
    """The path of one of the measuring programs."""
    return str(BUILD / "Benchmarks" / name)
