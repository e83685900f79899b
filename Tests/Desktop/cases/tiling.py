"""Window managers with layouts that let a window out over a protocol of their own: actions, rules, restarts, ends."""

import signal

from harness import servers
from harness.applications import APPLICATIONS, own_window
from harness.grabs import all_held, held_by_others
from harness.monitors import Monitors, Plug
from harness.oracle import ACTIONS, corrected, target
from harness.rect import Rect
from harness.settling import settles_on
from harness.tiling import TILING_DESKTOPS, TilingDesktop
from harness.waiting import until
from harness.watcher import GeometryWatcher

from . import case_for_each
from .window_manager_changes import POLL, taken

FIRST = Plug("DUMMY0", Rect(0, 0, 1920, 1080), primary=True)
SECOND = Plug("DUMMY1", Rect(1920, 0, 1280, 1024))
NATURAL = Rect(311, 173, 762, 503)
ON_SECOND = Rect(2131, 173, 762, 503)
BAR = 24
OWN = "org.example.Own"

EACH = tuple(f"{name}.{kind}" for name in TILING_DESKTOPS for kind in ("mousepad", "xterm"))


def open_desktop(program, manager: str, name: str, **options) -> TilingDesktop:
    return TILING_DESKTOPS[manager](program, f"{name}.{manager}", **options)


def presses_come_out(desktop: TilingDesktop, product, running, action: str, area: Rect, what: str) -> None:
    """Presses twice; the second press changes nothing. The window was floating, or in the layout."""
    window = running.window
    before = desktop.windows.frame(window)
    desktop.press(product, action)
    until(lambda: desktop.is_floating(window), f"{action} {what} to take the window out of the layout")
    # Of the decoration that it has now.
    settles = settles_on(desktop.windows, window, running.application, desktop.manager)
    asked = target(action, before, area)
    wanted = corrected(action, settles(asked.size), asked, area)
    desktop.holds_frame(window, wanted, f"{action} {what}, from {before}")
    watcher = GeometryWatcher(desktop.server.display, window)
    desktop.press(product, action)
    desktop.holds_frame(window, wanted, f"{action} once more {what}")
    changes = watcher.changes()
    watcher.close()
    assert not changes, f"{action} once more {what} moved the window through {', '.join(map(str, changes))}"


def every_action(desktop: TilingDesktop, product, running, area: Rect, when: str, natural: Rect = NATURAL) -> None:
    failures = []
    for action in ACTIONS:
        for is_tiled in (True, False):
            if is_tiled:
                desktop.tile(running.window)
            else:
                desktop.place(running.window, natural)
            state = "out of the layout" if is_tiled else "while floating"
            try:
                presses_come_out(desktop, product, running, action, area, f"{state} {when}")
            except AssertionError as failure:
                failures.append(str(failure))
    assert not failures, "\n".join(failures)


@case_for_each("desktop.tiling.actions", EACH)
def every_action_places_tiled_and_floating_windows(program, each):
    manager, kind = each.split(".")
    with open_desktop(program, manager, f"tiling.actions.{kind}") as desktop:
        other = desktop.open(APPLICATIONS["mousepad"])
        running = desktop.open(APPLICATIONS[kind])
        product = desktop.launch()
        product.until_status("Active")
        every_action(desktop, product, running, desktop.visible_frame(), "beside another")
        assert not desktop.is_floating(other.window), "another window was taken out of the layout"
        desktop.put_bar(BAR)
        screen = desktop.visible_frame()
        area = screen._replace(y=BAR, height=screen.height - BAR)
        desktop.tile(running.window)
        presses_come_out(desktop, product, running, "maximize", area, "below a bar")


@case_for_each("desktop.tiling.monitors", TILING_DESKTOPS)
def every_action_works_on_the_second_monitor(program, manager):
    with open_desktop(program, manager, "tiling.monitors", server=servers.two_monitors) as desktop:
        Monitors(desktop).arrange(FIRST, SECOND)
        desktop.follow_monitors()
        desktop.open(APPLICATIONS["mousepad"])
        running = desktop.open(APPLICATIONS["xterm"])
        product = desktop.launch()
        product.until_status("Active")
        desktop.put_bar(BAR)
        area = SECOND.frame._replace(y=BAR, height=SECOND.frame.height - BAR)
        desktop.to_second_monitor(running.window)
        every_action(desktop, product, running, area, "on the second monitor", ON_SECOND)


@case_for_each("desktop.tiling.rules", TILING_DESKTOPS)
def the_first_window_of_a_ruled_application_is_placed(program, manager):
    with open_desktop(program, manager, "tiling.rules") as desktop:
        desktop.session.install(OWN, "StartupWMClass=OwnWindow")
        desktop.session.rules({"debian-xterm": "leftHalf", OWN: "almostMaximize"})
        product = desktop.launch()
        product.until_status("Active")
        unruled = desktop.open(APPLICATIONS["mousepad"])
        for application, action in ((own_window(), "almostMaximize"), (APPLICATIONS["xterm"], "leftHalf")):
            running = desktop.start(application)
            window = desktop.wait_for(running)

            def wanted() -> Rect:
                asked = target(action, Rect(0, 0, 1, 1), desktop.visible_frame())
                settles = settles_on(desktop.windows, window, application, desktop.manager)
                return corrected(action, settles(asked.size), asked, desktop.visible_frame())

            until(
                lambda: desktop.is_floating(window) and desktop.windows.frame(window) == wanted(),
                f"{application.name} to stand as by {action}", 5.0,
                lambda: f"{desktop.windows.frame(window)}, floating {desktop.is_floating(window)}, wanted {wanted()}",
            )
        assert not desktop.is_floating(unruled.window), "a window without a rule was taken out of the layout"


@case_for_each("desktop.tiling.life", TILING_DESKTOPS)
def a_restart_and_an_end_of_the_window_manager_are_survived(program, manager):
    with open_desktop(program, manager, "tiling.life") as desktop:
        running = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        screen = desktop.visible_frame()

        def works(when: str) -> None:
            for action in ("leftHalf", "center"):
                desktop.tile(running.window)
                presses_come_out(desktop, product, running, action, screen, when)

        works("before")
        desktop.restart_in_place()
        desktop.until_known(running.window)
        until(lambda: held_by_others(desktop.server.display) == all_held(), "the keys to be held", POLL)
        works("after a restart in place")
        desktop.stop_window_manager(signal.SIGKILL)
        product.until_status("Waiting for permission", POLL)
        desktop.begin()
        desktop.wait_for(running)
        desktop.until_known(running.window)
        product.until_status("Active", POLL)
        works("after it came back")


@case_for_each("desktop.tiling.taken", TILING_DESKTOPS)
def keys_that_the_user_has_bound_stay_the_users_and_the_others_work(program, manager):
    with open_desktop(program, manager, "tiling.taken") as desktop:
        desktop.bind("leftHalf")
        running = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status(taken(("leftHalf",)))
        desktop.tile(running.window)
        before = desktop.windows.frame(running.window)
        desktop.press(product, "leftHalf")
        assert desktop.windows.frame(running.window) == before and not desktop.is_floating(running.window)
        presses_come_out(desktop, product, running, "rightHalf", desktop.visible_frame(), "beside a taken key")
