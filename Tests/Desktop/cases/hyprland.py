"""Hyprland, which runs only in a virtual machine here: it needs a graphics device."""

from harness.applications import APPLICATIONS, Application
from harness.hyprland import HyprlandDesktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect

from . import case_for_each

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
