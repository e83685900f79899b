"""Hyprland, which runs only in a virtual machine here: it needs a graphics device."""

from harness.applications import APPLICATIONS, Application
from harness.hyprland import PATIENCE, STARTING, HyprlandDesktop, Window
from harness.oracle import ACTIONS, expected
from harness.popover import GAP, SHADOW, WIDTH
from harness.rect import Rect
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
