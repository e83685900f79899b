"""Keys that the window manager holds, borrowed with the user's consent.

They are ours while the program runs, and the window manager's again however the program ends."""

import signal
import time
from pathlib import Path

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.freed_keys import add_settings
from harness.grabs import GreedyClient, held_by_others, held_through_extension
from harness.holders import reported_obstacles
from harness.kwin import Bus, Gio
from harness.kwin_holder import LEFT, KeyHolder, N
from harness.oracle import ACTIONS
from harness.product import Product, run_to_end
from harness.skipping import Skipped
from harness.waiting import until, until_equal

from . import case, case_for_each
from .window_manager_changes import HOLDING, POLL, taken, works

# muffin alone keeps the workspaces' keys for Cinnamon's shell, which is not there to act on them: it has a case of its own.
LENDING = [manager for manager in HOLDING if manager != "muffin"]

# The program renews its grabs for the last time half a second after the last keyboard event.
CALM = 1.0


def workspace(desktop: Desktop) -> int:
    return desktop.windows.cardinals(desktop.windows.root, "_NET_CURRENT_DESKTOP")[0]


def desktop_acts(desktop: Desktop, when: str) -> None:
    """The window manager's own binding of two of the keys switches workspaces."""
    for action, wanted in (("rightHalf", 1), ("leftHalf", 0)):

        def acts(action=action, wanted=wanted) -> bool:
            # The server may still be releasing the grabs of a program that has just ended.
            if workspace(desktop) != wanted:
                desktop.keyboard.press(action)
                desktop.windows.fence()
            return workspace(desktop) == wanted

        until(acts, f"the window manager to switch workspaces {when}", saw=lambda: workspace(desktop))


def asks(desktop: Desktop, program, option: str) -> None:
    ended, _, errors, _ = run_to_end(desktop.session, program, option, seconds=20.0)
    assert (ended, errors) == (0, ""), f"{option}: {ended}, {errors}"


def until_ours(desktop: Desktop, product: Product, seconds: float) -> None:
    """Window managers grab their keys at the start, and again whenever another keyboard is used; here that is the
    tests' own. The program renews its grabs after them each time: the keys are ours once they have been ours for some
    time."""
    came = time.monotonic()

    def is_ours() -> bool:
        nonlocal came
        desktop.keyboard.press("rightHalf")
        product.until_at_rest()
        desktop.windows.fence()
        if workspace(desktop) != 0:
            came = time.monotonic()
            desktop.windows.show_workspace(0)
            until(lambda: workspace(desktop) == 0, "the window manager to switch back")
        return time.monotonic() - came > CALM

    until(is_ours, "the program to have the borrowed keys", seconds)


def works_alone(desktop: Desktop, product: Product, window: int, when: str) -> None:
    until_ours(desktop, product, 5.0)
    works(desktop, product, window, when=when)
    assert workspace(desktop) == 0, f"the window manager has seen a borrowed key {when}"


@case_for_each("desktop.borrowed", LENDING)
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


@case_for_each("desktop.borrowed-again", LENDING)
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

        until_ours(desktop, product, POLL)
        works_alone(desktop, product, editor.window, f"after {manager} was restarted")
        product.terminate()
        desktop_acts(desktop, "after the program has ended")


@case("desktop.borrowed.both-ways")
def a_key_that_is_held_in_both_ways_stays_its_holders_and_says_so(program):
    with Desktop(program, name="borrowed.both-ways") as desktop:
        desktop.start_window_manager("openbox", keys_free=False)
        held = desktop.manager.holds
        editor = desktop.open(APPLICATIONS["mousepad"])
        greedy = GreedyClient(desktop.server.display, "center")
        product = desktop.launch()
        product.until_status(taken(held | {"center"}))
        assert reported_obstacles(desktop.session, program) == {"center": "heldBothWays"}
        _, output, _, _ = run_to_end(desktop.session, program, "--status")
        assert "taken\n" + " " * 30 + "Tessel cannot borrow it: " in output, output

        asks(desktop, program, "--take-shortcuts")
        product.until_status(taken({"center"}))
        assert reported_obstacles(desktop.session, program) == {"center": "heldBothWays"}
        until_ours(desktop, product, 5.0)
        works(desktop, product, editor.window, [action for action in ACTIONS if action != "center"])
        # Asked for that one alone, it has to say that it cannot.
        ended, _, errors, _ = run_to_end(desktop.session, program, "--take-shortcuts", seconds=20.0)
        assert ended == 1 and "Ctrl+Alt+C: Tessel cannot borrow it: it is held in both ways" in errors, (ended, errors)

        greedy.close()
        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        assert reported_obstacles(desktop.session, program) == {}
        works(desktop, product, editor.window, ["center"])


# A binding on which muffin acts by itself, with one of our keys and another; on workspaces only Cinnamon's shell acts.
MUFFINS = {"show_desktop": "['<Control><Alt>d', '<Super>d']"}


def shows_desktop(desktop: Desktop) -> bool:
    return desktop.windows.cardinals(desktop.windows.root, "_NET_SHOWING_DESKTOP") == [1]


def muffin_acts(desktop: Desktop, keys: tuple[str, ...], when: str) -> None:
    """It shows the desktop, and the next press brings the windows back."""
    for wanted in (True, False):

        def acts(wanted=wanted) -> bool:
            # The server may still be at the grabs of a program that has just ended.
            if shows_desktop(desktop) != wanted:
                desktop.keyboard.chord(*keys)
                desktop.windows.fence()
            return shows_desktop(desktop) == wanted

        until(acts, f"muffin to act on {'+'.join(keys)} {when}")


def muffin_has_its_keys(desktop: Desktop, held: set[str], when: str) -> None:
    name = desktop.server.display
    until_equal(lambda: (held_through_extension(name), set(held_by_others(name))), (held, set()),
                f"the keys that muffin holds, and those that anybody has by the other kind of grab, {when}")
    muffin_acts(desktop, ("Control", "Alt", "D"), when)


def works_beside_muffin(desktop: Desktop, product: Product, window: int, held: set[str], when: str) -> None:
    """Six presses are six placements, and muffin acts on none of them, but on its other key."""
    came = time.monotonic()

    def is_ours() -> bool:
        nonlocal came
        desktop.keyboard.press("almostMaximize")
        product.until_at_rest()
        desktop.windows.fence()
        if shows_desktop(desktop):
            came = time.monotonic()
            desktop.keyboard.chord("Super", "D")
            until(lambda: not shows_desktop(desktop), "muffin to bring the windows back")
        return time.monotonic() - came > CALM

    until(is_ours, f"the program to have the borrowed keys {when}", 5.0)
    works(desktop, product, window, when=when)
    assert not shows_desktop(desktop), f"muffin has seen a borrowed key {when}"
    assert set(held_by_others(desktop.server.display)) >= held, f"the keys are not borrowed {when}"
    muffin_acts(desktop, ("Super", "D"), when)


@case("desktop.borrowed.muffin")
def keys_that_muffin_holds_are_ours_with_consent_and_muffins_again_afterwards(program):
    with Desktop(program, name="borrowed.muffin") as desktop:
        add_settings(desktop.session, "org/cinnamon/desktop/keybindings/wm", **MUFFINS)
        desktop.start_window_manager("muffin", keys_free=False)
        held = desktop.manager.holds | {"almostMaximize"}
        editor = desktop.open(APPLICATIONS["mousepad"])
        muffin_has_its_keys(desktop, held, "before the program runs")
        product = desktop.launch()
        product.until_status(taken(held))
        muffin_acts(desktop, ("Control", "Alt", "D"), "without consent")

        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        works_beside_muffin(desktop, product, editor.window, held, "with consent")

        asks(desktop, program, "--give-back-shortcuts")
        product.until_status(taken(held))
        muffin_acts(desktop, ("Control", "Alt", "D"), "after they were given back")

        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        product.process.kill()
        product.process.wait()
        muffin_has_its_keys(desktop, held, "after the program was killed")

        product = desktop.launch()
        product.until_status("Active")
        works_beside_muffin(desktop, product, editor.window, held, "at the next start")
        product.terminate()
        muffin_has_its_keys(desktop, held, "after the program has ended")


def until_ours_alone(desktop: Desktop, product: Product, holder: KeyHolder) -> None:
    """KGlobalAccel grabs its keys anew when another keyboard is used, as window managers do."""
    came = time.monotonic()

    def is_ours() -> bool:
        nonlocal came
        times = holder.reported()
        desktop.keyboard.press("leftHalf")
        product.until_at_rest()
        if holder.reported() > times:
            came = time.monotonic()
        return time.monotonic() - came > CALM

    until(is_ours, "the program to have the borrowed key", POLL)


@case("desktop.borrowed.kglobalaccel")
def a_key_of_another_program_in_plasma_on_x11_is_borrowed_without_a_change_of_the_settings(program):
    if Gio is None:
        raise Skipped("no module gi (Debian package python3-gi)")
    with Desktop(program, name="borrowed.kglobalaccel") as desktop:
        desktop.start_window_manager("kwin_x11")
        desktop.bus = Bus(desktop.session.environment["DBUS_SESSION_BUS_ADDRESS"])
        # That of Plasma 5 is started by the bus, that of Plasma 6 with the session.
        for daemon in Path("/usr/lib").glob("*/libexec/kglobalacceld"):
            desktop.session.start([str(daemon)], "kglobalacceld")
        until(lambda: desktop.bus.has_owner("org.kde.kglobalaccel"), "KGlobalAccel")
        holder = KeyHolder(desktop, "first", LEFT, N)
        editor = desktop.open(APPLICATIONS["mousepad"])

        def is_its_holders(when: str) -> None:
            times = holder.reported()
            desktop.keyboard.press("leftHalf")
            holder.until_reported(times + 1, when)

        product = desktop.launch()
        product.until_status(taken({"leftHalf"}))
        is_its_holders("without consent")
        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        until_ours_alone(desktop, product, holder)
        times = holder.reported()
        works(desktop, product, editor.window, when="with consent")
        assert (holder.reported(), holder.keys()) == (times, {LEFT, N}), f"{holder.reported()}, {holder.keys()}"
        asks(desktop, program, "--give-back-shortcuts")
        product.until_status(taken({"leftHalf"}))
        is_its_holders("after it was given back")
        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        product.process.kill()
        product.process.wait()
        is_its_holders("after the program was killed")
