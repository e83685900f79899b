"""Every action on every kind of window under every window manager: the exact frame, and repeats that change nothing."""

import impossible
from harness.applications import APPLICATIONS
from harness.desktop import Desktop, RunningApplication
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.settling import settles_on
from harness.watcher import GeometryWatcher
from harness.window_managers import WINDOW_MANAGERS

from . import case_for_each

# Where a person might have put a window: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(311, 173, 762, 503)


@case_for_each("desktop.actions", WINDOW_MANAGERS)
def every_action_on_every_application(program, manager):
    with Desktop(program, name=f"actions.{manager}") as desktop:
        desktop.start_window_manager(manager)
        running = [desktop.start(application) for application in APPLICATIONS.values()]
        for one in running:
            desktop.wait_for(one)
        product = desktop.launch()
        product.until_status("Active")
        failures = []
        for one in running:
            desktop.windows.activate(one.window)
            others = {other.window for other in running if other is not one}
            for action in ACTIONS:
                try:
                    press_twice(desktop, product, one, action, others)
                except AssertionError as failure:
                    failures.append(f"{one.application.name}, {action}: {failure}")
        assert not failures, "\n".join(failures)


def press_twice(desktop: Desktop, product, one: RunningApplication, action: str, others: set[int]) -> None:
    windows = desktop.windows
    windows.place(one.window, NATURAL)
    before = windows.frame(one.window)
    elsewhere = {window: windows.frame(window) for window in others}
    settles = settles_on(windows, one.window, one.application, desktop.manager)
    wanted = expected(action, before, desktop.visible_frame(), settles)
    deviation = impossible.ACTIONS.get((desktop.manager.name, one.application.name, action))
    if deviation:
        wanted = deviation[1](wanted)
    desktop.press(product, action)
    desktop.holds_frame(one.window, wanted, f"frame (from {before})")

    watcher = GeometryWatcher(desktop.server.display, one.window)
    desktop.press(product, action)
    desktop.holds_frame(one.window, wanted, "frame after a repeat")
    changes = watcher.changes()
    watcher.close()
    # If the window has taken the requested size, or rounds it in a known way by then, nothing moves, not even for a
    # moment.
    takes_any_size = wanted.size == expected(action, wanted, desktop.visible_frame(), lambda size: size).size
    if takes_any_size or one.application.has_increments:
        assert not changes, f"the repeat moved the window through {', '.join(map(str, changes))}"
    assert {window: windows.frame(window) for window in others} == elsewhere, "another window moved"
