"""App rules on X11: an application with a rule starts again and again."""

import subprocess
from dataclasses import dataclass

from . import probe

from harness.desktop import Desktop
from harness.product import Product


@dataclass(frozen=True)
class Contender:
    name: str
    # The name of its application.
    window_class: str


TESSEL = Contender("Tessel", "tessel-measured")


def commands(window_class: str) -> dict[str, list[str]]:
    return {
        "xterm": ["/usr/bin/xterm", "-name", window_class, "-class", window_class],
        "a client that draws at once": [probe("QuickClient"), window_class],
    }


PROGRAMS = tuple(commands(""))


@dataclass
class Samples:
    milliseconds: list[float]
    first_pictures: list[tuple[int, int]]


def start_tessel(desktop: Desktop) -> Product:
    """Tessel maximizes the first window of its application."""
    window_class = TESSEL.window_class
    desktop.session.configure(
        f".local/share/applications/{window_class}.desktop",
        f"[Desktop Entry]\nType=Application\nName=Measured\nExec=false\nStartupWMClass={window_class}\n",
    )
    desktop.session.settings(f"<key>rules</key><dict><key>{window_class}</key><string>maximize</string></dict>")
    product = desktop.launch()
    product.until_status("Active")
    return product


def block(desktop: Desktop, contender: Contender, program: str, launches: int, samples: Samples) -> None:
    words = [probe("RuleLatency"), contender.window_class, str(launches), *commands(contender.window_class)[program]]
    done = subprocess.run(words, env=desktop.session.environment, capture_output=True, text=True, check=False, timeout=120)
    assert done.returncode == 0, f"{contender.name}, {program}: {done.stderr.strip()}"
    for line in done.stdout.splitlines():
        values = line.split()
        if len(values) == 2:
            samples.first_pictures.append((int(values[0]), int(values[1])))
        else:
            samples.milliseconds.append(float(values[0]) / 1000)
