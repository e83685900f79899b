"""KWin on Wayland: every action on windows of GTK, of Qt and of X11, to the pixel, and windows that must not move."""

import sys

from harness.applications import APPLICATIONS, OWN_WINDOW, WAYLAND_PANEL
from harness.kwin import SCREENS, Client, KWinDesktop
from harness.oracle import ACTIONS, corrected, expected, target
from harness.rect import Rect
from harness.skipping import require_module
from harness.waiting import until, until_equal
from Xlib import X, display

from . import case, case_for_each

# Where a person might have put a window: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(311, 173, 862, 603)
COMMANDS = {name: APPLICATIONS[name].command for name in ("mousepad", "featherpad", "xterm")}
THICKNESS = 40


def own_window(*wishes: str) -> tuple[str, ...]:
    """Our own test window with these options, an X11 client."""
    return (sys.executable, OWN_WINDOW, *wishes)


def open_application(desktop: KWinDesktop, name: str) -> Client:
    return desktop.open(*COMMANDS[name], package=APPLICATIONS[name].package)


def any_size(size: tuple[int, int]) -> tuple[int, int]:
    return size


def whole_characters(desktop: KWinDesktop, client: Client):
    """The size that xterm takes for a requested one: rows and columns by its hints, plus the space around them."""
    if desktop.eyes.look()["is_six"]:
        # There it keeps the requested size (measured with 6.3).
        return any_size
    connection = display.Display(desktop.session.environment["DISPLAY"])
    (window,) = windows_of(connection, client.process.pid)
    hints, inner = window.get_wm_normal_hints(), window.get_geometry()
    outer = desktop.eyes.frame(client.window)
    connection.close()

    def taken(wanted: int, frame: int, own: int, base: int, step: int) -> int:
        return (wanted - (frame - own) - base) // step * step + base + (frame - own)

    return lambda size: (
        taken(size[0], outer.width, inner.width, hints.base_width, hints.width_inc),
        taken(size[1], outer.height, inner.height, hints.base_height, hints.height_inc),
    )


def windows_of(connection, process_id: int) -> list:
    """The X windows with size hints that a process has declared as its own."""
    found, waiting = [], [connection.screen().root]
    while waiting:
        window = waiting.pop()
        waiting += window.query_tree().children
        owner = window.get_full_property(connection.intern_atom("_NET_WM_PID"), X.AnyPropertyType)
        if owner and owner.value[0] == process_id and window.get_wm_normal_hints():
            found.append(window)
    return found


def every_action(
    desktop: KWinDesktop, product, client: Client, natural: Rect, visible: Rect, settles=any_size,
    without: tuple[str, ...] = (),
) -> None:
    """Each action places the window correctly, twice; those of `without` have no effect."""
    for action in ACTIONS:
        desktop.eyes.place(client.window, natural, settles)
        before = desktop.eyes.frame(client.window)
        wanted = before if action in without else expected(action, before, visible, settles)
        desktop.press(product, action)
        desktop.holds_frame(client.window, wanted, f"frame after {action}")
        desktop.press(product, action)
        desktop.holds_frame(client.window, wanted, f"frame after a second {action}")


@case_for_each("desktop.kwin.actions", COMMANDS)
def every_action_puts_a_window_to_the_pixel(program, name):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, name)
        other = desktop.wait_for(desktop.start(*own_window()))
        before = desktop.eyes.frame(other.window)
        desktop.eyes.activate(client.window)
        product = desktop.launch()
        settles = whole_characters(desktop, client) if name == "xterm" else any_size
        every_action(desktop, product, client, NATURAL, SCREENS[0], settles)
        assert desktop.eyes.frame(other.window) == before, "another window moved"


@case("desktop.kwin.outputs")
def a_window_stays_on_the_screen_that_it_is_mostly_on(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        for screen, natural in ((SCREENS[1], Rect(1750, 100, 801, 502)), (SCREENS[1], Rect(1300, 50, 700, 500)),
                                (SCREENS[0], Rect(1200, 50, 700, 500))):
            every_action(desktop, product, client, natural, screen)


@case("desktop.kwin.panel")
def a_panel_keeps_its_space(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        require_module("GtkLayerShell", "0.1", "gir1.2-gtklayershell-0.1")
        panel = desktop.start(sys.executable, WAYLAND_PANEL, str(THICKNESS))
        until_equal(
            lambda: [each.frame for each in desktop.eyes.windows() if each.process == panel.pid],
            [SCREENS[0]._replace(height=THICKNESS)], "the panel",
        )
        desktop.eyes.activate(client.window)
        visible = Rect(0, THICKNESS, 1600, 900 - THICKNESS)
        every_action(desktop, product, client, NATURAL, visible)
        every_action(desktop, product, client, Rect(1700, 100, 801, 502), SCREENS[1])
        desktop.session.processes.end(panel)
        until(lambda: all(each.process != panel.pid for each in desktop.eyes.windows()), "the panel to be gone")
        every_action(desktop, product, client, NATURAL, SCREENS[0])


@case("desktop.kwin.states")
def maximized_and_tiled_windows_are_released(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "featherpad")
        product = desktop.launch()
        for name, state in (
            ("maximized", f'find("{client.window}").setMaximize(true, true);'),
            ("maximized in height", f'find("{client.window}").setMaximize(true, false);'),
            ("tiled left", "workspace.slotWindowQuickTileLeft();"),
            ("tiled in a corner", "workspace.slotWindowQuickTileBottomRight();"),
        ):
            desktop.eyes.place(client.window, NATURAL)
            desktop.eyes.look(state)
            until(lambda: desktop.eyes.frame(client.window) != NATURAL, f"the window to be {name}")
            product.until_at_rest()
            desktop.press(product, "rightHalf")
            desktop.holds_frame(client.window, Rect(800, 0, 800, 900), f"frame of a window that was {name}")
            # Released: it takes its own size, and no screen edge holds it.
            desktop.eyes.place(client.window, NATURAL)


@case("desktop.kwin.left-alone")
def fullscreen_windows_refusing_windows_and_no_window_at_all(program):
    with KWinDesktop(program) as desktop:
        product = desktop.launch()
        desktop.press(product, "leftHalf")
        assert desktop.eyes.windows() == [], "a window came from nowhere"
        client = open_application(desktop, "mousepad")
        desktop.eyes.look(f'find("{client.window}").fullScreen = true;')
        until(lambda: desktop.eyes.frame(client.window) == SCREENS[0], "the window to fill the screen")
        product.until_at_rest()
        desktop.press(product, "leftHalf")
        assert desktop.eyes.frame(client.window) == SCREENS[0], "a fullscreen window was moved"
        assert desktop.eyes.find(client.window).is_full, "it is not fullscreen any more"
        desktop.end(client)
        # A window that keeps its size goes to its edge.
        fixed = desktop.open(*own_window("--fixed", "--type", "NORMAL", "--place", "400", "300", "301", "203"))
        before = desktop.eyes.frame(fixed.window)
        for action in ("rightHalf", "leftHalf", "maximize", "almostMaximize"):
            wanted = corrected(action, before.size, target(action, before, SCREENS[0]), SCREENS[0])
            desktop.press(product, action)
            desktop.holds_frame(fixed.window, wanted, f"frame of a fixed window after {action}")
        desktop.end(fixed)
        # A window with a smallest size, requested smaller: it gets the smallest size, at its edge.
        editor = open_application(desktop, "featherpad")
        desktop.eyes.look(f'find("{editor.window}").frameGeometry = {{x: 50, y: 60, width: 10, height: 100}};')
        until(lambda: desktop.eyes.frame(editor.window)[:2] == (50, 60), "the window to be small")
        # In KWin 6 a Qt 6 program takes any requested size, however small, until a client that knows its smallest size
        # requests one.
        seen = desktop.eyes.find(editor.window)
        small = Rect(50, 60, *map(round, map(max, seen.frame.size, seen.smallest)))
        desktop.press(product, "center")
        desktop.holds_frame(
            editor.window, target("center", small, SCREENS[0]), "frame of the smallest window in the middle")

