"""GNOME Shell with monitors of different scales, and with monitors that are connected and disconnected."""

from harness.applications import APPLICATIONS
from harness.gnome import TOP_BAR, Gnome
from harness.gnome_monitors import Monitor, ScalableGnome, arrange
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.waiting import until, until_equal

from . import case, case_for_each
from .shells import NATURAL, open_application

KINDS = {
    "mousepad": {"GDK_BACKEND": "wayland"},
    # With its own decoration, through Xwayland.
    "mousepad-csd": {"GTK_CSD": "1", "GDK_BACKEND": "x11"},
}
# In the space of a monitor: away from every edge, odd and even mixed, and within half a monitor of scale two.
SMALL = Rect(91, 83, 562, 403)


@case_for_each("desktop.gnome.scales", KINDS)
def every_action_is_exact_whatever_the_scale(program, kind):
    with ScalableGnome(program, f"gnome.scales.{kind}") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        extra = KINDS[kind] | (desktop.x11_environment() if kind == "mousepad-csd" else {})
        _, window = desktop.open(list(APPLICATIONS[kind].command), kind, extra)
        failures = []
        for scales in ((1.25, 1.0), (1.25, 2.0)):
            # While the program runs, as a user does who changes the settings.
            first, second = arrange(desktop, *(Monitor(number, scale) for number, scale in enumerate(scales)))
            areas = [first.grown(0, 0, -TOP_BAR, 0), second]
            until_equal(desktop.work_areas, areas, "work areas")
            for area in areas:
                for action in ACTIONS:
                    before = desktop.place(window, SMALL._replace(x=SMALL.x + area.x, y=SMALL.y + area.y))
                    wanted = expected(action, before, area, lambda size: size)
                    desktop.hands.press(action)
                    try:
                        desktop.holds_frame(window, wanted, f"{action} at scales {scales} (from {before})")
                        product.until_no_retry()
                    except AssertionError as failure:
                        failures.append(str(failure))
        assert not failures, "\n".join(failures)


@case("desktop.gnome.unplugged")
def a_window_is_placed_on_the_monitor_that_is_left(program):
    with Gnome(program, "gnome.unplugged") as desktop:
        desktop.session.rules({"org.xfce.mousepad": "maximize"})
        product = desktop.launch()
        product.until_status("Active")
        _, window = open_application(desktop, "featherpad")

        def placed(area: Rect, action: str) -> None:
            until(lambda: area in desktop.work_areas(), f"the work area {area}", saw=desktop.work_areas)
            before = desktop.place(window, NATURAL._replace(x=area.x + NATURAL.x))
            desktop.hands.press(action)
            desktop.holds_frame(window, expected(action, before, area, lambda size: size), f"{action} in {area}")

        both = arrange(desktop, Monitor(0), Monitor(1))
        placed(both[1], "rightHalf")
        # The window's monitor is disconnected; the shell moves the window to the other, at any place.
        (left,) = arrange(desktop, Monitor(0))
        area = left.grown(0, 0, -TOP_BAR, 0)
        until(lambda: contains(left, desktop.frame(window)), "the window to be on the monitor that is left",
              saw=lambda: desktop.frame(window))
        desktop.at_rest(window)
        desktop.hands.press("rightHalf")
        desktop.holds_frame(window, Rect(800, TOP_BAR, 800, area.height), "rightHalf on the monitor that is left")
        placed(area, "leftHalf")
        # The primary monitor is disconnected while another one is connected: only the former second monitor remains.
        (left,) = arrange(desktop, Monitor(1))
        area = left.grown(0, 0, -TOP_BAR, 0)
        placed(area, "almostMaximize")
        process, opened = open_application(desktop, "mousepad")
        desktop.holds_frame(opened, area, "a window by its rule")
        desktop.session.processes.end(process)
        # Connected again, on the other side.
        second, first = arrange(desktop, Monitor(1), Monitor(0))
        assert first.x == second.width
        desktop.activate(window)
        placed(second.grown(0, 0, -TOP_BAR, 0), "maximize")
        placed(first, "maximize")


def contains(outer: Rect, inner: Rect) -> bool:
    return (outer.x <= inner.x and inner.x + inner.width <= outer.x + outer.width
            and outer.y <= inner.y and inner.y + inner.height <= outer.y + outer.height)
