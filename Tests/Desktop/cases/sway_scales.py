"""sway on outputs of different scales."""

from dataclasses import replace

from harness.applications import APPLICATIONS
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.sway import FIRST, SECOND, SwayDesktop
from harness.waiting import until_equal

from . import case_for_each

KINDS = {
    "mousepad": APPLICATIONS["mousepad"],
    "featherpad": APPLICATIONS["featherpad"],
    # With its own decoration, through Xwayland.
    "mousepad-csd": replace(APPLICATIONS["mousepad-csd"], environment={"GTK_CSD": "1", "GDK_BACKEND": "x11"}),
}
# Each in the space of an output: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(111, 73, 662, 403)


def scaled(output: Rect, scale: float) -> Rect:
    return output._replace(width=round(output.width / scale), height=round(output.height / scale))


@case_for_each("desktop.sway.scales", KINDS)
def every_action_is_exact_whatever_the_scale(program, kind):
    with SwayDesktop(program, name=f"sway.scales.{kind}") as desktop:
        product = desktop.launch()
        running = desktop.open(KINDS[kind])
        failures = []
        for first, second in ((1.5, 1.0), (1.25, 2.0)):
            # While the program runs, as a user does who changes the settings.
            desktop.command(f"output HEADLESS-1 scale {first}")
            desktop.command(f"output HEADLESS-2 scale {second}")
            until_equal(desktop.outputs, [scaled(FIRST, first), scaled(SECOND, second)], "the outputs")
            for number, output in enumerate(desktop.outputs()):
                natural = NATURAL._replace(x=NATURAL.x + output.x, width=min(NATURAL.width, output.width - 150))
                for action in ACTIONS:
                    desktop.place(running.number, natural)
                    wanted = expected(action, natural, desktop.work_area(number), lambda size: size)
                    try:
                        desktop.press(product, action)
                        desktop.holds_frame(running.number, wanted, f"{action} at scales {first}, {second}")
                    except AssertionError as failure:
                        failures.append(str(failure))
        assert not failures, "\n".join(failures)
