"""Printed results: Markdown, the most important figure first."""

import os
import platform
import subprocess
from pathlib import Path

from . import ROOT

# The other programs in the measurements.
PACKAGES = [
    "openbox", "xfwm4", "kwin-x11", "xvfb", "mousepad", "sxhkd", "wmctrl", "xdotool", "xbindkeys", "devilspie2",
    "kwin-wayland", "gnome-shell", "sway", "g++-12",
]


def heading(text: str) -> None:
    print(f"\n## {text}\n", flush=True)


def table(columns: list[str], rows: list[list[str]]) -> None:
    """A table whose first column is text and whose other columns are numbers."""
    widths = [max(len(line[index]) for line in [columns, *rows]) for index in range(len(columns))]

    def line(cells: list[str]) -> str:
        padded = [cells[0].ljust(widths[0]), *(cell.rjust(width) for cell, width in zip(cells[1:], widths[1:]))]
        return f"| {' | '.join(padded)} |"

    rule = ["-" * widths[0], *("-" * (width - 1) + ":" for width in widths[1:])]
    print("\n".join(map(line, [columns, rule, *rows])), flush=True)


def load() -> float:
    """The average number of processes that wanted a processor during the last minute."""
    return os.getloadavg()[0]


def processor() -> str:
    lines = Path("/proc/cpuinfo").read_text().splitlines()
    model = next(line.split(":")[1].strip() for line in lines if line.startswith("model name"))
    return f"{os.cpu_count()} x {model}"


def machine() -> str:
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    return f"{processor()}, {system}, Linux {platform.release()}"


def versions(packages: list[str]) -> str:
    command = ["dpkg-query", "--show", "--showformat", "${Package} ${Version}, ", *packages]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.removesuffix(", ")


def commit() -> str:
    command = ["git", "-C", str(ROOT), "describe", "--always", "--dirty"]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()


if __name__ == "__main__":
    print(f"Tessel {commit()} on {machine()}.")
    print(f"Packages: {versions(PACKAGES)}.")
