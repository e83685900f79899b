"""Window managers that hold the keys, release them, end, start, or are replaced while the program runs."""

import signal

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.holders import COMMON_PURPOSES, until_holders
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.window_managers import WINDOW_MANAGERS

from . import case, case_for_each

NATURAL = Rect(311, 173, 762, 503)
# The program checks for a window manager every two seconds, up to ten seconds late.
POLL = 13.0
HOLDING = [name for name, manager in WINDOW_MANAGERS.items() if manager.holds]


def works(desktop: Desktop, product, window: int, actions=ACTIONS, when: str = "") -> None:
    for action in actions:
        desktop.windows.place(window, NATURAL)
        before = desktop.windows.frame(window)
        desktop.press(product, action)
        wanted = expected(action, before, desktop.visible_frame(), lambda size: size)
        desktop.holds_frame(window, wanted, f"frame after {action} {when}")


def taken(actions) -> str:
    return "Some shortcuts are taken: " + ", ".join(action for action in ACTIONS if action in actions)


@case_for_each("desktop.taken", HOLDING)
def keys_that_the_window_manager_holds_are_reported_and_the_others_work(program, manager):
    with Desktop(program, name=f"taken.{manager}") as desktop:
        desktop.start_window_manager(manager, keys_free=False)
        held = desktop.manager.holds
        if not desktop.manager.holds_through_extension:
            assert set(held_by_others(desktop.server.display)) == held, f"{manager} does not hold what it should"
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status(taken(held))
        if desktop.manager.held_by:
            until_holders(desktop.session, program,
                          {action: (desktop.manager.held_by, COMMON_PURPOSES[action]) for action in held})
        works(desktop, product, editor.window, [action for action in ACTIONS if action not in held])


@case_for_each("desktop.freed", ("openbox", "metacity"))
def freed_keys_work_after_off_and_on(program, manager):
    with Desktop(program, name=f"freed.{manager}") as desktop:
        desktop.start_window_manager(manager, keys_free=False)
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status(taken(desktop.manager.holds))
        desktop.stop_window_manager()
        product.until_status("Waiting for permission", POLL)
        assert not held_by_others(desktop.server.display), "keys are held without a window manager"
        desktop.start_window_manager(manager)
        product.until_status("Active", POLL)
        desktop.adopt(editor)
        works(desktop, product, editor.window)


@case_for_each("desktop.restart", WINDOW_MANAGERS)
def the_keys_survive_a_restart_of_the_window_manager(program, manager):
    with Desktop(program, name=f"restart.{manager}") as desktop:
        desktop.start_window_manager(manager)
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        desktop.stop_window_manager(signal.SIGKILL)
        desktop.start_window_manager(manager)
        desktop.adopt(editor)
        product.until_status("Active", POLL)
        works(desktop, product, editor.window, when=f"after {manager} was restarted")


@case("desktop.replacement")
def the_keys_survive_the_replacement_of_the_window_manager(program):
    with Desktop(program, name="replacement") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        works(desktop, product, editor.window, when="under openbox")
        for manager in ("metacity", "xfwm4", "openbox"):
            desktop.replace_window_manager(manager)
            desktop.adopt(editor)
            product.until_status("Active", POLL)
            works(desktop, product, editor.window, when=f"after {manager} took over")


@case("desktop.late-window-manager")
def the_keys_wait_for_a_window_manager(program):
    with Desktop(program, name="late-window-manager") as desktop:
        product = desktop.launch()
        product.until_status("Waiting for permission")
        assert not held_by_others(desktop.server.display), "keys are held without a window manager"
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product.until_status("Active", POLL)
        assert held_by_others(desktop.server.display) == all_held()
        works(desktop, product, editor.window)
