"""The window managers of the tests, and their differences."""

from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable

from . import freed_keys
from .session import Session

FLUXBOX = Path("/etc/X11/fluxbox/init")


def fluxbox_without_background(session: Session) -> None:
    """Where no program for backgrounds is installed, fluxbox opens a dialog that says so, which takes the focus."""
    session.configure(".fluxbox/init", FLUXBOX.read_text() + "\nsession.styleOverlay: ~/.fluxbox/overlay\n")
    session.configure(".fluxbox/overlay", "background: unset\n")


@dataclass(frozen=True)
class WindowManager:
    name: str
    package: str
    command: tuple[str, ...]
    # Writes the configuration by which a user frees our keys from it; None if it holds none of them.
    free_keys: Callable[[Session], None] | None
    # The actions whose keys it grabs by default.
    holds: frozenset[str] = frozenset()
    # Their holder, as the program reports it; empty if it cannot know.
    held_by: str = ""
    # Those grabs are of the X Input extension; core protocol grabs do not conflict with them.
    holds_through_extension: bool = False
    environment: dict[str, str] = field(default_factory=dict)
    # It draws shadows, so applications that decorate themselves draw theirs too.
    composites: bool = False
    # The height of its own bar at the bottom of the screen.
    bar: int = 0
    # It rounds sizes down to a terminal's rows and columns.
    honours_increments: bool = True
    # It limits a pager's requests to the window's own minimum and maximum size.
    honours_limits: bool = True
    # Writes a configuration that makes it independent of what else is installed.
    configure: Callable[[Session], None] | None = None

    @property
    def program(self) -> str:
        return self.command[0]


ARROWS = frozenset({"leftHalf", "rightHalf", "maximize", "maximizeHeight"})

WINDOW_MANAGERS = {
    manager.name: manager
    for manager in (
        WindowManager(
            "openbox", "openbox", ("openbox", "--sm-disable"), freed_keys.openbox, holds=ARROWS,
            held_by="openbox",
        ),
        WindowManager(
            "xfwm4", "xfwm4", ("xfwm4", "--sm-client-disable", "--compositor=on", "--vblank=off"), freed_keys.xfwm4,
            holds=ARROWS | {"almostMaximize"}, held_by="Xfce", composites=True, honours_increments=False,
        ),
        WindowManager(
            "metacity", "metacity", ("metacity", "--sm-disable", "--compositor=xrender"), freed_keys.metacity,
            holds=ARROWS, held_by="Metacity", composites=True,
        ),
        WindowManager(
            "marco", "marco", ("marco", "--sm-disable", "--composite"), freed_keys.marco,
            holds=ARROWS | {"almostMaximize"}, held_by="MATE", composites=True,
        ),
        WindowManager(
            "kwin_x11", "kwin-x11", ("kwin_x11", "--no-kactivities"), None,
            environment={"KWIN_COMPOSE": "O2"}, composites=True,
        ),
        WindowManager(
            "mutter", "mutter", ("mutter", "--x11", "--sm-disable"), freed_keys.mutter,
            holds=ARROWS, held_by="Mutter", holds_through_extension=True, composites=True,
        ),
        # Cinnamon's window manager without the rest of Cinnamon.
        WindowManager(
            "muffin", "muffin", ("muffin", "--sm-disable"), freed_keys.muffin,
            holds=ARROWS, holds_through_extension=True, composites=True,
        ),
        WindowManager(
            "icewm", "icewm", ("icewm",), freed_keys.icewm,
            holds=frozenset({"leftHalf", "rightHalf", "almostMaximize", "maximizeHeight"}), bar=26,
            honours_limits=False,
        ),
        WindowManager(
            "fluxbox", "fluxbox", ("fluxbox",), freed_keys.fluxbox,
            holds=frozenset({"leftHalf", "rightHalf"}), bar=20, honours_increments=False, honours_limits=False,
            configure=fluxbox_without_background,
        ),
    )
}
