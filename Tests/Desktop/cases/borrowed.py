"""Keys that the window manager holds, borrowed with the user's consent: they are ours while the program runs, and the
window manager's again however that ends."""

import signal

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.product import Product, run_to_end
from harness.waiting import until

from . import case_for_each
from .window_manager_changes import HOLDING, POLL, taken, works


def workspace(desktop: Desktop) -> int:
    return desktop.windows.cardinals(desktop.windows.root, "_NET_CURRENT_DESKTOP")[0]


def desktop_acts(desktop: Desktop, when: str) -> None:
    """The window manager's own binding of two of the keys switches workspaces."""
    for action, wanted in (("rightHalf", 1), ("leftHalf", 0)):
        desktop.keyboard.press(action)
        until(lambda wanted=wanted: workspace(desktop) == wanted, f"the window manager to switch workspaces {when}",
              saw=lambda: workspace(desktop))


def asks(desktop: Desktop, program, option: str) -> None:
    ended, _, errors, _ = run_to_end(desktop.session, program, option, seconds=20.0)
    assert (ended, errors) == (0, ""), f"{option}: {ended}, {errors}"


def works_alone(desktop: Desktop, product: Product, window: int, when: str) -> None:
    works(desktop, product, window, when=when)
    assert workspace(desktop) == 0, f"the window manager has seen a borrowed key {when}"


@case_for_each("desktop.borrowed", HOLDING)
def held_keys_are_ours_with_consent_and_their_holders_again_afterwards(program, manager):
    with Desktop(program, name=f"borrowed.{manager}") as desktop:
        desktop.start_window_manager(manager, keys_free=False)
        held = desktop.manager.holds
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop_acts(desktop, "before the program runs")
        product = desktop.launch()
        product.until_status(taken(held))
        desktop_acts(desktop, "without consent")

        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        works_alone(desktop, product, editor.window, "with consent")

        asks(desktop, program, "--give-back-shortcuts")
        product.until_status(taken(held))
        desktop_acts(desktop, "after they were given back")

        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        product.process.kill()
        product.process.wait()
        desktop_acts(desktop, "after the program was killed")

        product = desktop.launch()
        product.until_status("Active")
        works_alone(desktop, product, editor.window, "at the next start")
        product.terminate()
        desktop_acts(desktop, "after the program has ended")


@case_for_each("desktop.borrowed-again", HOLDING)
def borrowed_keys_survive_a_restart_of_the_window_manager(program, manager):
    with Desktop(program, name=f"borrowed-again.{manager}") as desktop:
        desktop.start_window_manager(manager, keys_free=False)
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status(taken(desktop.manager.holds))
        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        desktop.stop_window_manager(signal.SIGKILL)
        desktop.start_window_manager(manager, keys_free=False)
        desktop.adopt(editor)
        product.until_status("Active", POLL)

        def is_ours() -> bool:
            """The window manager grabs its keys when it has begun, and the program again after that."""
            desktop.keyboard.press("rightHalf")
            product.until_at_rest()
            desktop.windows.fence()
            is_switched = workspace(desktop) != 0
            desktop.windows.show_workspace(0)
            until(lambda: workspace(desktop) == 0, "the window manager to switch back")
            return not is_switched

        until(is_ours, "the program to borrow the keys again", POLL)
        works_alone(desktop, product, editor.window, f"after {manager} was restarted")
        product.terminate()
        desktop_acts(desktop, "after the program has ended")
