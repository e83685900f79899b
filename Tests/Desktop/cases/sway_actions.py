"""Every action on sway, on Wayland and X11 programs, on either output."""

from dataclasses import replace

from harness.applications import APPLICATIONS
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.sway import SwayDesktop

from . import case_for_each

# Away from every edge, no round number, odd and even mixed; on the first output and on the second.
NATURAL = (Rect(311, 173, 762, 503), Rect(2131, 173, 762, 503))

WAYLAND = {name: APPLICATIONS[name] for name in ("mousepad", "featherpad")}
KINDS = WAYLAND | {"xterm": replace(APPLICATIONS["xterm"], environment={"WAYLAND_DISPLAY": ""})}


@case_for_each("desktop.sway.actions", KINDS)
def every_action_moves_a_window_on_either_output(program, kind):
    with SwayDesktop(program, name=f"sway.actions.{kind}") as desktop:
        running = desktop.open(KINDS[kind])
        other = desktop.open(WAYLAND["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        elsewhere = desktop.frame(other.number)
        desktop.place(running.number, NATURAL[0])
        # The remaining windows of the layout have the room now.
        elsewhere = desktop.frame(other.number)
        failures = []
        for output in (0, 1):
            for action in ACTIONS:
                desktop.place(running.number, NATURAL[output])
                wanted = expected(action, NATURAL[output], desktop.work_area(output), lambda size: size)
                try:
                    for time in ("", " once more"):
                        desktop.press(product, action)
                        desktop.holds_frame(running.number, wanted, f"{action}{time} on output {output}")
                    assert desktop.frame(other.number) == elsewhere, f"{action} moved another window"
                except AssertionError as failure:
                    failures.append(str(failure))
        assert not failures, "\n".join(failures)
        assert desktop.window(running.number).border == "normal", "the border is the user's"
