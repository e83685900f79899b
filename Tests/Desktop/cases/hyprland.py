"""Hyprland, which runs only in a virtual machine here: it needs a graphics device."""

import sys

from harness.applications import APPLICATIONS, WAYLAND_PANEL, Application
from harness.hyprland import PATIENCE, STARTING, HyprlandDesktop, Window
from harness.oracle import ACTIONS, expected
from harness.popover import GAP, SHADOW, WIDTH
from harness.rect import Rect
from harness.skipping import require_module
from harness.waiting import until, until_equal

from . import case, case_for_each

# Away from every edge, no round number, odd and even mixed.
NATURAL = Rect(211, 93, 732, 403)

KINDS = {"mousepad": APPLICATIONS["mousepad"], "foot": Application("foot", "foot", ("foot",))}


def every_action(desktop: HyprlandDesktop, address: str, perform) -> None:
    failures = []
    for action in ACTIONS:
        desktop.place(address, NATURAL)
        wanted = expected(action, NATURAL, desktop.work_area(), lambda size: size)
        try:
            for time in ("", " once more"):
                perform(action)
                desktop.holds_frame(address, wanted, f"{action}{time}")
        except AssertionError as failure:
            failures.append(str(failure))
    assert not failures, "\n".join(failures)


@case_for_each("desktop.hyprland.performs", KINDS)
def every_action_that_is_asked_for_by_name_moves_the_window(program, kind):
    with HyprlandDesktop(program, name=f"hyprland.performs.{kind}") as desktop:
        address = desktop.open(KINDS[kind])
        desktop.launch()
        every_action(desktop, address, lambda action: desktop.ask_program("--perform", action))


@case_for_each("desktop.hyprland.keys", KINDS)
def every_shortcut_moves_the_window(program, kind):
    with HyprlandDesktop(program, name=f"hyprland.keys.{kind}") as desktop:
        address = desktop.open(KINDS[kind])
        desktop.launch()
        every_action(desktop, address, desktop.keyboard.press)


# Unlike the defaults, and with animations, which are short because each of their pictures takes a while here.
SURROUNDED = """
hl.animation({ leaf = "global", enabled = true, speed = 1, bezier = "default" })
hl.config({
    animations = { enabled = true },
    general = { gaps_in = 7, gaps_out = 13, border_size = 3 },
})
"""


@case("desktop.hyprland.tiled")
def tiled_and_maximized_windows_are_released_to_the_pixel(program):
    with HyprlandDesktop(program, SURROUNDED, name="hyprland.tiled") as desktop:
        other = desktop.open(KINDS["foot"])
        address = desktop.open(KINDS["foot"])
        desktop.launch()
        area = desktop.work_area()
        alone = area.grown(-13, -13, -13, -13)
        failures = []
        for state in ("tiled", "maximized"):
            for action in ACTIONS:
                before = desktop.tile(address)
                assert desktop.frame(other) != alone, f"the layout did not make room: {desktop.windows()}"
                if state == "maximized":
                    desktop.dispatch("fullscreen", 'mode="maximized",action="set"', address)
                    until(lambda: desktop.window(address).mode == 1, "the window to be maximized", PATIENCE)
                    before = desktop.rested_frame(address)
                wanted = expected(action, before, area, lambda size: size)
                try:
                    desktop.keyboard.press(action)
                    # Its frame may be the wanted one before.
                    until(lambda: desktop.window(address).floating and desktop.window(address).mode == 0,
                          f"the {state} window to be released by {action}", PATIENCE, desktop.windows)
                    desktop.holds_frame(address, wanted, f"{action} of the {state} window")
                    until_equal(lambda: desktop.frame(other), alone, f"the other window after {action}", PATIENCE)
                except AssertionError as failure:
                    failures.append(str(failure))
        assert not failures, "\n".join(failures)


@case("desktop.hyprland.fullscreen")
def a_fullscreen_window_stays_as_it_is(program):
    with HyprlandDesktop(program, name="hyprland.fullscreen") as desktop:
        address = desktop.open(KINDS["foot"])
        desktop.launch()
        desktop.dispatch("fullscreen", 'mode="fullscreen",action="set"', address)
        until(lambda: desktop.window(address).mode == 2, "the window to be fullscreen", PATIENCE)
        before = desktop.window(address)
        desktop.ask_program("--perform", "left-half", status=1)
        assert desktop.window(address) == before
        desktop.dispatch("fullscreen", 'mode="fullscreen",action="unset"', address)
        until(lambda: desktop.window(address).mode == 0, "the window not to be fullscreen", PATIENCE)
        desktop.keyboard.press("leftHalf")
        area = desktop.work_area()
        desktop.holds_frame(address, area._replace(width=area.width // 2), "the left half after fullscreen")


# The height of a panel on the first monitor.
THICKNESS = 41


@case("desktop.hyprland.monitors")
def every_action_is_exact_on_monitors_of_any_scale_and_turn(program):
    require_module("GtkLayerShell", "0.1", "gir1.2-gtklayershell-0.1")
    with HyprlandDesktop(program, name="hyprland.monitors") as desktop:
        desktop.session.start([sys.executable, WAYLAND_PANEL, str(THICKNESS)], "panel")
        until_equal(desktop.work_area, Rect(0, THICKNESS, 1280, 800 - THICKNESS), "the panel's space", STARTING)
        desktop.add_monitor()
        address = desktop.open(KINDS["foot"])
        desktop.launch()
        failures = []
        # Scale and turn of both, while the program runs.
        for first, second in ((("1", 0), ("1.25", 0)), (("1.25", 2), ("1", 1))):
            desktop.set_monitor("Virtual-1", "1280x800", "0x0", *first)
            desktop.set_monitor("HEADLESS-1", "1250x750", "1280x0", *second)
            for number in (0, 1):
                area = desktop.work_area(number)
                natural = Rect(area.x + 51, area.y + 33, 502, 303)
                for action in ACTIONS:
                    desktop.place(address, natural)
                    try:
                        desktop.keyboard.press(action)
                        wanted = expected(action, natural, area, lambda size: size)
                        desktop.holds_frame(address, wanted, f"{action} on monitor {number} at {first} and {second}")
                    except AssertionError as failure:
                        failures.append(str(failure))
        assert not failures, "\n".join(failures)


@case("desktop.hyprland.first-window")
def the_first_window_of_a_ruled_application_is_placed(program):
    with HyprlandDesktop(program, name="hyprland.first-window") as desktop:
        desktop.session.rules({"org.xfce.mousepad": "leftHalf"})
        desktop.launch()
        address = desktop.launch_application(KINDS["mousepad"])
        area = desktop.work_area()
        desktop.holds_frame(address, Rect(area.x, area.y, area.width // 2, area.height), "the first window")
        assert desktop.window(address).floating
        second = desktop.launch_application(KINDS["foot"])
        assert not desktop.window(second).floating, "a window without a rule was placed"


@case("desktop.hyprland.popover")
def a_second_start_opens_the_popover_and_escape_closes_it(program):
    with HyprlandDesktop(program, name="hyprland.popover") as desktop:
        editor = desktop.open(KINDS["foot"])
        before = desktop.frame(editor)
        product = desktop.launch()

        def shown() -> list[Window]:
            return [window for window in desktop.windows() if window.process == product.process.pid]

        desktop.ask_program()
        (popover,) = until(lambda: [window for window in shown() if window.focused], "the popover", STARTING,
                           desktop.windows)
        area = desktop.work_area()
        # The program draws the shadow itself, so its window is larger than the visible plate.
        corner = (area.x + area.width - WIDTH - GAP - SHADOW, area.y + GAP - SHADOW)
        until_equal(lambda: [window.frame[:2] for window in shown()], [corner], "the popover's corner", PATIENCE)
        assert desktop.window(popover.address).floating
        assert desktop.frame(editor) == before, "the layout made room for the popover"
        picture = desktop.picture("popover").crop((*corner, area.x + area.width, area.y + 300))
        assert len(picture.getcolors(1 << 20)) > 50, "the popover is empty"
        desktop.keyboard.chord("Escape")
        until(lambda: not shown(), "the popover to close", PATIENCE, desktop.windows)
        until(lambda: desktop.window(editor).focused, "the editor to have the keyboard", PATIENCE)
