"""Every action on Wayfire, on Wayland and X11 programs, on either output."""

import sys
from dataclasses import replace

from harness.applications import APPLICATIONS, WAYLAND_PANEL
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.skipping import require_module
from harness.waiting import until, until_equal
from harness.wayfire import FIRST, OTHERS, WayfireDesktop

from . import case, case_for_each

# Away from every edge, no round number, odd and even mixed; on the first output and on the second.
NATURAL = (Rect(311, 173, 762, 503), Rect(2131, 173, 762, 503))
THICKNESS = 41

KINDS = {
    "mousepad": APPLICATIONS["mousepad"],
    "featherpad": APPLICATIONS["featherpad"],
    "xterm": replace(APPLICATIONS["xterm"], environment={"WAYLAND_DISPLAY": ""}),
}


@case_for_each("desktop.wayfire.actions", KINDS)
def every_action_moves_a_window_on_either_output(program, kind):
    require_module("GtkLayerShell", "0.1", "gir1.2-gtklayershell-0.1")
    with WayfireDesktop(program, name=f"wayfire.actions.{kind}") as desktop:
        desktop.session.start([sys.executable, WAYLAND_PANEL, str(THICKNESS)], "panel")
        until_equal(desktop.work_area, Rect(0, THICKNESS, FIRST.width, FIRST.height - THICKNESS), "the work area", 60.0)
        running = desktop.open(KINDS[kind])
        other = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        elsewhere = desktop.frame(other.number)
        failures = []
        for output in (0, 1):
            for action in ACTIONS:
                assert desktop.place(running.number, NATURAL[output]) == NATURAL[output]
                wanted = expected(action, NATURAL[output], desktop.work_area(output), lambda size: size)
                try:
                    for time in ("", " once more"):
                        desktop.press(product, action)
                        desktop.holds_frame(running.number, wanted, f"{action}{time} on output {output}")
                    assert desktop.frame(other.number) == elsewhere, f"{action} moved another window"
                except AssertionError as failure:
                    failures.append(str(failure))
        assert not failures, "\n".join(failures)


@case_for_each("desktop.wayfire.maximized", KINDS)
def a_maximized_window_is_released(program, kind):
    with WayfireDesktop(program, name=f"wayfire.maximized.{kind}") as desktop:
        number = desktop.open(KINDS[kind]).number
        product = desktop.launch()
        product.until_status("Active")
        for action in ACTIONS:
            desktop.place(number, NATURAL[0])
            desktop.maximize(number)
            until(lambda: desktop.frame(number) == desktop.work_area() and desktop.is_at_rest(number),
                  "the maximized window to be drawn", saw=lambda: desktop.window(number))
            wanted = expected(action, desktop.work_area(), desktop.work_area(), lambda size: size)
            desktop.press(product, action)
            until(lambda: not desktop.window(number).tiled, f"the window to be released by {action}",
                  saw=lambda: desktop.window(number))
            desktop.holds_frame(number, wanted, f"{action} of a maximized window")


@case("desktop.wayfire.tiled")
def a_tiled_window_leaves_the_layout_for_good(program):
    layout = "[simple-tile]\ninner_gap_size = 0\n"
    with WayfireDesktop(program, layout, name="wayfire.tiled", others=(*OTHERS, "simple-tile")) as desktop:
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_area()
        half = area.width // 2

        def tiled() -> list[Rect]:
            return [view.goal for view in desktop.windows() if view.tiled]

        # Alone in the layout, and beside another one.
        for others in (0, 1):
            for _ in range(others):
                desktop.open(APPLICATIONS["mousepad"])
            number = desktop.open(APPLICATIONS["featherpad"]).number
            until(lambda: desktop.window(number).tiled and len(tiled()) == others + 1, "the layout", saw=desktop.windows)
            desktop.press(product, "leftHalf")
            until(lambda: not desktop.window(number).tiled, "the window to leave the layout",
                  saw=lambda: desktop.window(number))
            desktop.holds_frame(number, area._replace(width=half), "the left half")
            until_equal(tiled, [area] * others, "the layout without the window")
            # A window that appears changes the layout, and nothing else.
            another = desktop.open(APPLICATIONS["mousepad"])
            until(lambda: len(tiled()) == others + 1, "the layout with another window", saw=desktop.windows)
            desktop.holds_frame(number, area._replace(width=half), "the left half beside a changed layout")
            desktop.end(another)


@case("desktop.wayfire.fullscreen")
def a_fullscreen_window_stays_as_it_is(program):
    with WayfireDesktop(program, name="wayfire.fullscreen") as desktop:
        number = desktop.open(APPLICATIONS["mousepad"]).number
        product = desktop.launch()
        product.until_status("Active")
        desktop.connection.ask("wm-actions/set-fullscreen", view_id=number, state=True)
        until(lambda: desktop.window(number).content.size == FIRST.size, "the window to fill the screen")
        desktop.press(product, "leftHalf")
        assert desktop.window(number).goal == FIRST and desktop.window(number).fullscreen, desktop.window(number)
        desktop.connection.ask("wm-actions/set-fullscreen", view_id=number, state=False)
        desktop.place(number, NATURAL[0])
        desktop.press(product, "leftHalf")
        desktop.holds_frame(number, FIRST._replace(width=960), "the left half after fullscreen")


@case("desktop.wayfire.scales")
def every_action_is_exact_whatever_the_scale(program):
    with WayfireDesktop(program, name="wayfire.scales") as desktop:
        number = desktop.open(APPLICATIONS["mousepad"]).number
        product = desktop.launch()
        product.until_status("Active")
        smallest = desktop.place(number, NATURAL[0]._replace(width=10, height=10)).size
        failures = []
        for first, second in ((1.5, 1.0), (1.25, 2.0)):
            desktop.configure(f"[output:HEADLESS-1]\nscale = {first}\n[output:HEADLESS-2]\nscale = {second}\n")
            widths = [int(width / scale) for width, scale in ((1920, first), (1280, second))]
            until_equal(lambda: [output.width for output in desktop.outputs()], widths, "the outputs")
            for index, output in enumerate(desktop.outputs()):
                natural = Rect(output.x + 51, 73, min(562, output.width - 90), 403)
                for action in ACTIONS:
                    before = desktop.place(number, natural)
                    wanted = expected(action, before, desktop.work_area(index),
                                      lambda asked: tuple(map(max, asked, smallest)))
                    try:
                        desktop.press(product, action)
                        desktop.holds_frame(number, wanted, f"{action} at scales {first}, {second}")
                    except AssertionError as failure:
                        failures.append(str(failure))
        assert not failures, "\n".join(failures)
