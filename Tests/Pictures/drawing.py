"""Makes the program under test draw its pictures, and reads them."""

import functools
import os
import subprocess
import tempfile
from pathlib import Path

from PIL import Image

PROGRAM = Path(os.environ["TESSEL_PROGRAM"]).resolve()
TABS = ("shortcuts", "apps")
SCHEMES = ("light", "dark")


def names(language: str = "en") -> list[str]:
    """The files of one run, in the order of their creation."""
    return [f"menu-{language}-{tab}-{scheme}.png" for tab in TABS for scheme in SCHEMES]


def bare_environment(home: Path) -> dict[str, str]:
    """The environment without any setup: no display, no bus, no session."""
    # A sanitizer's options come from its variable, so that one is kept.
    kept = {name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}
    return kept | {"HOME": str(home), "PATH": "/usr/bin:/bin", "LANG": "C.UTF-8"}


def draw(folder: Path, **variables: str) -> None:
    """Draws the four pictures into a folder."""
    subprocess.run([PROGRAM, "--snapshot", folder], env=bare_environment(folder.parent / "home") | variables,
                   stdin=subprocess.DEVNULL, timeout=120, check=True)


@functools.cache
def pictures(language: str = "en") -> dict[tuple[str, str], Image.Image]:
    """The pictures by tab and scheme."""
    with tempfile.TemporaryDirectory() as folder:
        shots = Path(folder) / "shots"
        shots.mkdir()
        draw(shots, LANGUAGE=language)
        return {(tab, scheme): Image.open(shots / f"menu-{language}-{tab}-{scheme}.png").convert("RGB")
                for tab in TABS for scheme in SCHEMES}
