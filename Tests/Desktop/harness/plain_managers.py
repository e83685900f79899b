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
    # Applications whose windows it never shows on this server, with or without the program under test.
    hides: frozenset[str] = frozenset()
    # It calls a window fullscreen that is maximized in both directions; those stay.
    calls_maximized_fullscreen: bool = False
    composites: bool = False
    bar: int = 0

    @property
    def program(self) -> str:
        return self.command[0]


ABOVE_BAR = Rect(0, 0, 1920, 1055)
BESIDE_PANEL = Rect(0, 0, 1800, 1080)
BELOW_WIBAR = Rect(0, 21, 1920, 1059)

FONTS = "".join(f'{kind}Font "fixed"\n' for kind in ("Title", "Resize", "Menu", "Icon", "IconManager"))
# A person would put each new window where it belongs.
TWM = f"RandomPlacement\nNoGrabServer\n{FONTS}"

PLAIN_MANAGERS = {
    manager.name: manager
    for manager in (
        # Most of these take a configure request for the client's own, and leave its steps to it.
        PlainManager("wmaker", "wmaker", ("wmaker",), honours_increments=False),
        PlainManager("pekwm", "pekwm", ("pekwm",), honours_increments=False),
        PlainManager("awesome", "awesome", ("awesome",), visible=BELOW_WIBAR),
        PlainManager("ctwm", "ctwm", ("ctwm",), honours_increments=False),
        PlainManager("mwm", "mwm", ("mwm",)),
        PlainManager("sawfish", "sawfish", ("sawfish",), honours_increments=False),
        PlainManager("cwm", "cwm", ("cwm",), honours_increments=False),
        PlainManager("lwm", "lwm", ("lwm",), honours_increments=False),
        PlainManager("jwm", "jwm", ("jwm",), visible=ABOVE_BAR, honours_increments=False),
        # It is asked by messages, and ignores limits as well.
        PlainManager(
            "blackbox", "blackbox", ("blackbox",), visible=ABOVE_BAR, honours_increments=False, honours_limits=False
        ),
        PlainManager("fvwm3", "fvwm3", ("fvwm3",), visible=BESIDE_PANEL),
        PlainManager("fvwm", "fvwm", ("fvwm",), visible=BESIDE_PANEL),
        # The tests' servers have one font.
        PlainManager("twm", "twm", ("twm",), ((".twmrc", TWM),), {"LC_ALL": "C"}, honours_increments=False),
        PlainManager(
            "evilwm", "evilwm", ("evilwm", "-fn", "fixed"), honours_increments=False, calls_maximized_fullscreen=True
        ),
        PlainManager("afterstep", "afterstep", ("afterstep",), hides=frozenset({"xterm"})),
        # It sets the border of each window that is configured, also of those that it does not manage.
        PlainManager("9wm", "9wm", ("9wm",), honours_increments=False),
        # It takes the position for the client's, and keeps the corner of the frame near the screen.
        PlainManager("flwm", "flwm", ("flwm",), honours_increments=False),
        PlainManager("miwm", "miwm", ("miwm",), honours_increments=False),
        PlainManager("wm2", "wm2", ("wm2",), honours_increments=False),
        PlainManager("vtwm", "vtwm", ("vtwm",), ((".vtwmrc", TWM),), {"LC_ALL": "C"}, honours_increments=False),
    )
}
