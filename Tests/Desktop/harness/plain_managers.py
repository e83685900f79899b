"""Window managers beyond those of `window_managers.py`: many kinds of announcements, from none at all to nearly all.

The tests see them through the X server alone, see `plain_windows.py`.
"""

from dataclasses import dataclass, field

from .rect import Rect


@dataclass(frozen=True)
class PlainManager:
    name: str
    package: str
    command: tuple[str, ...]
    # Its configuration below the home directory: a path and a text.
    configuration: tuple[tuple[str, str], ...] = ()
    environment: dict[str, str] = field(default_factory=dict)
    # The area that its own bars leave of a screen of 1920 by 1080.
    visible: Rect = Rect(0, 0, 1920, 1080)
    # It rounds sizes down to a terminal's rows and columns.
    honours_increments: bool = True
    # It limits requests to the window's own minimum and maximum size.
    honours_limits: bool = True
    composites: bool = False
    bar: int = 0

    @property
    def program(self) -> str:
        return self.command[0]


PLAIN_MANAGERS = {
    manager.name: manager
    for manager in (
        PlainManager("wmaker", "wmaker", ("wmaker",)),
        PlainManager("pekwm", "pekwm", ("pekwm",), honours_increments=False, honours_limits=False),
        PlainManager("awesome", "awesome", ("awesome",)),
        PlainManager("ctwm", "ctwm", ("ctwm",), honours_increments=False, honours_limits=False),
        PlainManager("mwm", "mwm", ("mwm",)),
        PlainManager("sawfish", "sawfish", ("sawfish",)),
        PlainManager("cwm", "cwm", ("cwm",)),
        PlainManager("lwm", "lwm", ("lwm",)),
        PlainManager("jwm", "jwm", ("jwm",)),
        PlainManager("fvwm3", "fvwm3", ("fvwm3",)),
        PlainManager("blackbox", "blackbox", ("blackbox",)),
        PlainManager("twm", "twm", ("twm",), ((".twmrc", "RandomPlacement\nNoGrabServer\n"),)),
        PlainManager("evilwm", "evilwm", ("evilwm",)),
        PlainManager("windowlab", "windowlab", ("windowlab",)),
        PlainManager("afterstep", "afterstep", ("afterstep",)),
        PlainManager("fvwm", "fvwm", ("fvwm",)),
    )
}
