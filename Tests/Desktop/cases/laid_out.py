"""Window managers with layouts and no protocol to let a window out of them: tiled windows stay, floating ones are placed."""

import json

from harness.applications import APPLICATIONS, own_window
from harness.oracle import ACTIONS, expected
from harness.plain_managers import BELOW_WIBAR, PlainManager
from harness.product import run_to_end
from harness.rect import Rect
from harness.waiting import until
from harness.watcher import GeometryWatcher

from . import case_for_each
from .plain import PlainDesktop

# The usual configuration, in which windows float until a tag gets a layout.
TILING_AWESOME = """dofile("/etc/xdg/awesome/rc.lua")
local tile = require("awful").layout.suit.tile
for s in screen do
    for _, tag in ipairs(s.tags) do tag.layout = tile end
end
"""

# The usual configuration, with a typeface that is not one of the server's.
SUBTLE = """usual = File.read("/etc/xdg/subtle/subtle.rb")
eval(usual.gsub("-*-*-*-*-*-*-14-*-*-*-*-*-*-*", "xft:Monospace-8"))
"""

LAID_OUT = {
    manager.name: manager
    for manager in (
        PlainManager("dwm", "dwm", ("dwm",)),
        # Its default typeface is one of the server's, of which there may be none.
        PlainManager("spectrwm", "spectrwm", ("spectrwm",), (
            (".config/spectrwm/spectrwm.conf", "bar_enabled = 0\nbar_font = Monospace:size=8\n"),
        )),
        PlainManager("xmonad", "xmonad", ("xmonad",)),
        PlainManager("notion", "notion", ("notion",), ((".notion/.welcome", ""),)),
        # It takes commands over the session bus, and has none here.
        PlainManager(
            "awesome", "awesome", ("awesome",), ((".config/awesome/rc.lua", TILING_AWESOME),),
            {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}, visible=BELOW_WIBAR,
        ),
        PlainManager("subtle", "subtle", ("subtle",), ((".config/subtle/subtle.rb", SUBTLE),)),
    )
}
# Those that let dialogs float.
FLOATING = ("dwm", "spectrwm", "xmonad", "awesome")
NATURAL = Rect(311, 173, 762, 503)
ASIDE = Rect(1400, 700, 400, 300)
WORDS = "is laid out by its window manager"


def open_desktop(program, manager: str, subject: str) -> PlainDesktop:
    desktop = PlainDesktop(program, LAID_OUT[manager], subject)
    try:
        desktop.begin()
    except BaseException:
        desktop.close()
        raise
    return desktop


def status(desktop: PlainDesktop, program) -> dict:
    code, output, errors, _ = run_to_end(desktop.session, program, "--status", "--json", seconds=20.0)
    assert code == 0, errors
    return json.loads(output)


def tiled_window_stays(desktop: PlainDesktop, program, product, window: int) -> None:
    desktop.windows.activate(window)
    desktop.windows.until_at_rest(window)
    before = desktop.windows.client_rect(window)
    watcher = GeometryWatcher(desktop.server.display, window)
    for action in ACTIONS:
        desktop.press(product, action)
        desktop.windows.until_at_rest(window)
    changes = watcher.changes()
    watcher.close()
    # Window managers answer a request that they ignore with a report of the present geometry (ICCCM 4.1.5).
    after = desktop.windows.client_rect(window)
    assert after == before and len(set(changes)) <= 1 and all(change.size == before.size for change in changes), (
        f"from {before} through {', '.join(map(str, changes))} to {after}"
    )
    reported = status(desktop, program)
    assert reported["status"] == "active" and WORDS in reported["statusText"], reported["statusText"]


@case_for_each("desktop.laid-out.tiled", LAID_OUT)
def a_tiled_window_stays_and_the_status_says_why(program, manager):
    with open_desktop(program, manager, "laid-out") as desktop:
        desktop.open(APPLICATIONS["mousepad"])
        terminal = desktop.open(APPLICATIONS["xterm"])
        product = desktop.launch_active()
        assert WORDS not in status(desktop, program)["statusText"], "nothing was pressed yet"
        tiled_window_stays(desktop, program, product, terminal.window)


@case_for_each("desktop.laid-out.floating", FLOATING)
def a_floating_window_is_placed_beside_tiled_ones(program, manager):
    with open_desktop(program, manager, "floating") as desktop:
        tiled = desktop.open(APPLICATIONS["xterm"])
        product = desktop.launch_active()
        dialog = desktop.open(own_window("--type", "DIALOG", "--transient-for", hex(tiled.window)))
        windows = desktop.windows
        for action in ACTIONS:
            windows.place(dialog.window, NATURAL)
            windows.activate(dialog.window)
            before = windows.frame(dialog.window)
            desktop.press(product, action)
            wanted = expected(action, before, desktop.visible_frame(), lambda size: size)
            desktop.holds_frame(dialog.window, wanted, f"{action} from {before}")
        # Out of the way of a click.
        windows.place(dialog.window, ASIDE)
        tiled_window_stays(desktop, program, product, tiled.window)
        windows.place(dialog.window, NATURAL)
        windows.activate(dialog.window)
        desktop.press(product, "leftHalf")
        until(lambda: WORDS not in status(desktop, program)["statusText"], "the status to forget the tiled window")
