"""The applications whose windows are moved, chosen for how they differ."""

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
    # It decorates itself, and draws a shadow around itself where the window manager composites.
    draws_shadow: bool = False
    # Its window has a size and keeps it.
    fixed_size: bool = False
    # It counts its size in rows and columns.
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
    """A window of ours with these manners."""
    return Application("own", "", (sys.executable, OWN_WINDOW, *wishes))


def tk_window() -> Application:
    return Application("tk", "python3-tk", (sys.executable, TK_WINDOW))
