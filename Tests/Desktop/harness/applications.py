"""The applications whose windows the tests move. Each differs from the others in its window."""

import sys
from dataclasses import dataclass, field
from pathlib import Path

TK_WINDOW = str(Path(__file__).resolve().parent / "tk_window.py")
WAYLAND_PANEL = str(Path(__file__).resolve().parent / "wayland_panel.py")
OWN_WINDOW = str(Path(__file__).resolve().parent / "own_window.py")


@dataclass(frozen=True)
class Application:
    name: str
    package: str
    command: tuple[str, ...]
    environment: dict[str, str] = field(default_factory=dict)
    # Draws its own decoration, and its own shadow if the window manager composites.
    draws_shadow: bool = False
    # Its window has a fixed size.
    fixed_size: bool = False
    # Its size is in rows and columns.
    has_increments: bool = False


APPLICATIONS = {
    application.name: application
    for application in (
        Application("mousepad", "mousepad", ("mousepad", "--disable-server")),
        Application(
            "mousepad-csd", "mousepad", ("mousepad", "--disable-server"), {"GTK_CSD": "1"}, draws_shadow=True
        ),
        Application("featherpad", "featherpad", ("featherpad", "--standalone")),
        Application("xterm", "xterm", ("xterm", "-fa", "Monospace", "-fs", "10"), has_increments=True),
        Application(
            "fixed", "", (sys.executable, OWN_WINDOW, "--title", "A window of fixed size", "--fixed"), fixed_size=True
        ),
    )
}


def own_window(*wishes: str) -> Application:
    """Our own test window with these options."""
    return Application("own", "", (sys.executable, OWN_WINDOW, *wishes))


def tk_window() -> Application:
    return Application("tk", "python3-tk", (sys.executable, TK_WINDOW))
