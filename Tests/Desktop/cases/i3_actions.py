"""Every action on i3, on windows in the layout and on floating ones, on either monitor."""

from harness import servers
from harness.applications import APPLICATIONS, own_window
from harness.i3 import I3Desktop
from harness.monitors import Monitors, Plug
from harness.oracle import ACTIONS, corrected, target
from harness.rect import Rect
from harness.settling import settles_on
from harness.waiting import until
from harness.watcher import GeometryWatcher

from . import case, case_for_each

FIRST = Plug("DUMMY0", Rect(0, 0, 1920, 1080), primary=True)
SECOND = Plug("DUMMY1", Rect(1920, 0, 1280, 1024))
# Away from every edge, no round number, odd and even mixed; on the first monitor and on the second.
NATURAL = (Rect(311, 173, 762, 503), Rect(2131, 173, 762, 503))

KINDS = ("mousepad", "featherpad", "xterm")


def arrange(desktop: I3Desktop) -> None:
    Monitors(desktop).arrange(FIRST, SECOND)
    desktop.connect()


def presses_come_out(desktop: I3Desktop, product, running, action: str, output: int, what: str) -> None:
    """Presses twice; the second press changes nothing. The window was floating there, or in the layout."""
    window = running.window
    before, border = desktop.windows.frame(window), desktop.node(window)
    area = desktop.work_area(output)
    desktop.press(product, action)
    # A floating window may have other borders than a tiled one, and terminals count rows only when they float.
    until(lambda: desktop.node(window).floating, f"{action} {what} to take the window out of the layout")
    settles = settles_on(desktop.windows, window, running.application, desktop.manager)
    # A window that fills its part of the layout has its own size only outside: the one that it takes instead.
    asked = target(action, Rect(before.x, before.y, *settles(before.size)), area)
    wanted = corrected(action, settles(asked.size), asked, area)
    desktop.holds_frame(window, wanted, f"{action} {what}, from {before}")
    after = desktop.node(window)
    assert after == border._replace(floating=True), f"{action} {what} made {after} of {border}"
    watcher = GeometryWatcher(desktop.server.display, window)
    desktop.press(product, action)
    desktop.holds_frame(window, wanted, f"{action} once more {what}")
    changes = watcher.changes()
    watcher.close()
    assert not changes, f"{action} once more {what} moved the window through {', '.join(map(str, changes))}"


@case_for_each("desktop.i3.actions", KINDS)
def every_action_places_a_floating_window_on_either_monitor(program, kind):
    with I3Desktop(program, name=f"i3.actions.{kind}", server=servers.two_monitors) as desktop:
        arrange(desktop)
        other = desktop.open(APPLICATIONS["mousepad"])
        running = desktop.open(APPLICATIONS[kind])
        product = desktop.launch()
        product.until_status("Active")
        desktop.place(running.window, NATURAL[0])
        # The remaining window of the layout has the room now.
        elsewhere = desktop.windows.frame(other.window)
        failures = []
        for output in (0, 1):
            for action in ACTIONS:
                desktop.place(running.window, NATURAL[output])
                try:
                    presses_come_out(desktop, product, running, action, output, f"on monitor {output}")
                except AssertionError as failure:
                    failures.append(str(failure))
                assert desktop.windows.frame(other.window) == elsewhere, f"{action} moved another window"
        assert not failures, "\n".join(failures)


@case_for_each("desktop.i3.tiled", KINDS)
def every_action_takes_one_window_out_of_the_layout(program, kind):
    with I3Desktop(program, name=f"i3.tiled.{kind}") as desktop:
        others = [desktop.open(APPLICATIONS[name]).window for name in ("mousepad", "featherpad")]
        running = desktop.open(APPLICATIONS[kind])
        product = desktop.launch()
        product.until_status("Active")
        failures = []
        for action in ACTIONS:
            desktop.tile(running.window)
            assert not desktop.node(running.window).floating
            try:
                presses_come_out(desktop, product, running, action, 0, "out of the layout")
            except AssertionError as failure:
                failures.append(str(failure))
            assert not any(desktop.node(other).floating for other in others), f"{action} took another window out"
        # The others close the gap.
        area = desktop.work_area()
        frames = [desktop.windows.frame(other) for other in others]
        assert sum(frame.width for frame in frames) == area.width and {frame.height for frame in frames} == {area.height}
        assert not failures, "\n".join(failures)


@case_for_each("desktop.i3.layouts", ("tabbed", "stacked", "splitv", "alone"))
def a_window_leaves_every_kind_of_layout(program, layout):
    with I3Desktop(program, name=f"i3.layouts.{layout}") as desktop:
        if layout != "alone":
            desktop.open(APPLICATIONS["featherpad"])
        running = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        for action in ACTIONS:
            desktop.tile(running.window)
            if layout != "alone":
                desktop.command(f"layout {layout.replace('stacked', 'stacking')}")
            presses_come_out(desktop, product, running, action, 0, f"out of {layout}")


@case("desktop.i3.layouts.group")
def a_window_leaves_a_container_that_floats_with_others(program):
    with I3Desktop(program, name="i3.layouts.group") as desktop:
        stays = desktop.open(APPLICATIONS["mousepad"]).window
        desktop.command("split v")
        running = desktop.open(own_window())
        product = desktop.launch()
        product.until_status("Active")
        desktop.command("focus parent; floating enable; focus child")
        until(lambda: desktop.windows.active() == running.window, "the window to have the focus")
        place = desktop.windows.frame(stays)
        presses_come_out(desktop, product, running, "leftHalf", 0, "out of a floating group")
        # It fills the group's room now, and the group has not moved.
        assert desktop.windows.frame(stays)[:3] == place[:3], f"the group went to {desktop.windows.frame(stays)}"


BORDERS = {
    "none": "default_border none\ndefault_floating_border none\n",
    "pixel": "default_border pixel 3\ndefault_floating_border pixel 5\n",
    "smart": "hide_edge_borders smart\ndefault_border normal 4\ngaps inner 11\ngaps outer 7\n",
}


@case_for_each("desktop.i3.borders", BORDERS)
def borders_and_gaps_stay_as_the_user_has_them(program, kind):
    with I3Desktop(program, BORDERS[kind], f"i3.borders.{kind}") as desktop:
        running = desktop.open(APPLICATIONS["mousepad"])
        terminal = desktop.open(APPLICATIONS["xterm"])
        product = desktop.launch()
        product.until_status("Active")
        for one in (running, terminal):
            for action in ACTIONS:
                desktop.place(one.window, NATURAL[0])
                presses_come_out(desktop, product, one, action, 0, f"with {kind} borders")
            desktop.tile(one.window)
            presses_come_out(desktop, product, one, "maximize", 0, f"with {kind} borders out of the layout")


# Two typefaces, two sizes, so neither titles nor bars have the same height. Both have made a second press move the
# window.
FONTS = {"mono": "DejaVu Sans Mono 12", "serif": "DejaVu Serif 14"}


@case_for_each("desktop.i3.titles", FONTS)
def the_height_of_titles_makes_no_difference(program, kind):
    configuration = f"font pango:{FONTS[kind]}\ndefault_border normal 4\nhide_edge_borders smart\n"
    with I3Desktop(program, configuration, f"i3.titles.{kind}") as desktop:
        terminal = desktop.open(APPLICATIONS["xterm"])
        product = desktop.launch()
        product.until_status("Active")
        for action in ACTIONS:
            desktop.tile(terminal.window)
            presses_come_out(desktop, product, terminal, action, 0, f"with titles in {FONTS[kind]}")


@case("desktop.i3.left-alone")
def fullscreen_windows_and_empty_workspaces_are_left_alone(program):
    with I3Desktop(program, name="i3.left-alone") as desktop:
        other = desktop.open(APPLICATIONS["featherpad"]).window
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        product.until_status("Active")
        desktop.command("fullscreen enable")
        until(lambda: "FULLSCREEN" in desktop.windows.states(window), "the window to be fullscreen")
        for action in ACTIONS:
            desktop.press(product, action)
            assert desktop.windows.frame(window) == FIRST.frame, f"{action} moved a fullscreen window"
            assert not desktop.node(window).floating, f"{action} took a fullscreen window out of the layout"
        desktop.command("fullscreen disable; workspace 2")
        until(lambda: desktop.windows.active() == 0, "nothing to have the focus")
        for action in ACTIONS:
            desktop.press(product, action)
            assert not any(desktop.node(one).floating for one in (window, other)), f"{action} took a window"


@case("desktop.i3.panel")
def docks_and_bars_keep_their_space(program):
    with I3Desktop(program, name="i3.panel", server=servers.two_monitors) as desktop:
        arrange(desktop)
        free = [FIRST.frame, desktop.put_dock(SECOND.frame, 30)]
        running = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        for output in (0, 1):
            desktop.place(running.window, NATURAL[output])
            bar = desktop.bar_height()
            wanted = free[output]._replace(y=free[output].y + bar, height=free[output].height - bar)
            desktop.press(product, "maximize")
            desktop.holds_frame(running.window, wanted, f"frame between bar and panel on monitor {output}")


@case("desktop.i3.no-bar")
def without_bars_there_is_the_whole_screen(program):
    with I3Desktop(program, name="i3.no-bar", bar="") as desktop:
        running = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        presses_come_out(desktop, product, running, "maximize", 0, "without a bar")
        assert desktop.windows.frame(running.window) == FIRST.frame
