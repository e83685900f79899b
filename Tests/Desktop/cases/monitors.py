"""Two monitors: of different sizes, each with a panel, disconnected, and in unusual positions."""

from harness import servers
from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.monitors import Monitors, Plug
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.window_managers import WINDOW_MANAGERS

from . import case_for_each

FIRST = Plug("DUMMY0", Rect(0, 0, 1920, 1080), primary=True)
SMALL_RIGHT = Plug("DUMMY1", Rect(1920, 0, 1280, 800))


def every_action(
    desktop: Desktop, product, window: int, start: Rect, visible: Rect, where: str, actions=ACTIONS
) -> list[str]:
    """Presses each action with the window at `start`. Returns the results that differ from the rules."""
    failures = []
    for action in actions:
        desktop.windows.place(window, start)
        before = desktop.windows.frame(window)
        wanted = expected(action, before, visible, lambda size: size)
        try:
            desktop.press(product, action)
            desktop.holds_frame(window, wanted, "frame")
        except AssertionError as failure:
            failures.append(f"{action} {where}, from {before}: {failure}")
    return failures


@case_for_each("desktop.monitors", WINDOW_MANAGERS)
def a_window_stays_on_its_monitor_and_off_its_panel(program, manager):
    with Desktop(program, servers.two_monitors, f"monitors.{manager}") as desktop:
        desktop.start_window_manager(manager)
        monitors = Monitors(desktop)
        monitors.arrange(FIRST, SMALL_RIGHT)
        left = monitors.put_panel(FIRST.frame, 40)
        right = monitors.put_panel(SMALL_RIGHT.frame, 30)
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        failures = []
        for start, visible, where in (
            (Rect(311, 173, 762, 503), left, "on the left"),
            (Rect(2111, 93, 762, 503), right, "on the right"),
            (Rect(1311, 173, 762, 503), left, "mostly on the left"),
            (Rect(1711, 173, 762, 503), right, "mostly on the right"),
        ):
            failures += every_action(desktop, product, window, start, visible, where)
        assert not failures, "\n".join(failures)


@case_for_each("desktop.unplugged", WINDOW_MANAGERS)
def a_window_comes_back_from_an_unplugged_monitor(program, manager):
    with Desktop(program, servers.two_monitors, f"unplugged.{manager}") as desktop:
        desktop.start_window_manager(manager)
        monitors = Monitors(desktop)
        monitors.arrange(FIRST, SMALL_RIGHT)
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        visible = FIRST.frame._replace(height=FIRST.frame.height - desktop.manager.bar)
        failures = []
        for action in ("leftHalf", "rightHalf", "almostMaximize"):
            desktop.windows.place(window, Rect(2111, 93, 762, 503))
            monitors.arrange(FIRST)
            # If the window manager forgets the focus, a person clicks.
            desktop.windows.activate(window)
            before = desktop.windows.frame(window)
            desktop.press(product, action)
            try:
                desktop.holds_frame(window, expected(action, before, visible, lambda size: size), "frame")
            except AssertionError as failure:
                failures.append(f"{action} after the unplugging, from {before}: {failure}")
            monitors.arrange(FIRST, SMALL_RIGHT)
            desktop.windows.activate(window)
            failures += every_action(
                desktop, product, window, Rect(2111, 93, 762, 503), SMALL_RIGHT.frame, "on the monitor plugged again",
                ("rightHalf",),
            )
        assert not failures, "\n".join(failures)


@case_for_each("desktop.primary-right", WINDOW_MANAGERS)
def the_primary_monitor_may_be_on_the_right_and_lower(program, manager):
    with Desktop(program, servers.two_monitors, f"primary-right.{manager}") as desktop:
        small_left = Plug("DUMMY1", Rect(0, 0, 1280, 800))
        primary = Plug("DUMMY0", Rect(1280, 120, 1920, 1080), primary=True)
        desktop.start_window_manager(manager)
        monitors = Monitors(desktop)
        monitors.arrange(small_left, primary)
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        failures = every_action(
            desktop, product, window, Rect(211, 93, 762, 503), small_left.frame, "on the small left monitor"
        )
        # The window manager's own bar is on the primary monitor.
        visible = primary.frame._replace(height=primary.frame.height - desktop.manager.bar)
        failures += every_action(
            desktop, product, window, Rect(1911, 293, 762, 503), visible, "on the primary monitor"
        )
        assert not failures, "\n".join(failures)
