"""Cinnamon on Wayland: rules, a refused core, borrowed keys, the item in the panel, and the popover."""

import os
import signal
from pathlib import Path

from harness import keys_page
from harness.cinnamon import MONITOR, Cinnamon
from harness.oracle import expected
from harness.picture import save_screen
from harness.product import Product, run_to_end
from harness.tray import ACTIVE, PAUSED, choose
from harness.waiting import STARTING, until, until_equal

from . import case, case_for_each
from .bound_keys import press_until_placed
from .gnome_popover import GAP, SHADOW
from .shells import HELD, LOOK, NATURAL, open_application, sizes_of, works


@case("desktop.cinnamon.tiled")
def a_tiled_window_is_released_first(program):
    with Cinnamon(program, "cinnamon.tiled") as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        for action in ("rightHalf", "almostMaximize", "maximize"):
            start = desktop.place(window, NATURAL)
            desktop.hands.chord("Super", "Left")
            until(lambda: desktop.frame(window) != start, "the window to be tiled")
            before = desktop.at_rest(window)
            desktop.hands.press(action)
            wanted = expected(action, before, area, lambda size: size)
            desktop.holds_frame(window, wanted, f"{action} of a window that is tiled")


@case("desktop.cinnamon.first-window")
def a_rule_places_the_first_window_and_no_other(program):
    with Cinnamon(program, "cinnamon.first-window") as desktop:
        desktop.session.rules({"org.xfce.mousepad": "center", "featherpad": "rightHalf", "debian-xterm": "leftHalf"})
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        for name, action in (("mousepad", "center"), ("featherpad", "rightHalf"), ("xterm", "leftHalf")):
            process, window = open_application(desktop, name)
            sizes = sizes_of(desktop, name, window)
            # A window takes its place from any frame of the same size.
            wanted = lambda: expected(action, desktop.frame(window), area, sizes)  # noqa: E731
            until(lambda: desktop.at_rest(window) == wanted(), f"{name} to be at its place",
                  saw=lambda: (desktop.frame(window), wanted()))
            if name == "mousepad":
                desktop.hands.chord("Control", "Shift", "N")
                (second,) = until(lambda: [each for each in desktop.windows_of(process.pid) if each != window],
                                  "a second window")
                product.until_at_rest()
                assert desktop.at_rest(second) != wanted(), "the second window was placed, too"
                desktop.see(f"one({second}).delete(global.get_current_time())")


@case("desktop.cinnamon.refused")
def a_cinnamon_that_does_not_evaluate_code_is_reported(program):
    with Cinnamon(program, "cinnamon.refused") as desktop:
        # For the program alone: the tests read through the same door.
        desktop.see("""(service => {
            const evaluate = service.Eval;
            service.Eval = code => code.startsWith('(function (program)') && !globalThis.isOpen
                ? [false, '{}'] : evaluate.call(service, code);
        })(Main.cinnamonDBusService)""")
        product = desktop.launch()
        product.until_status("Waiting for permission")
        _, output, _, _ = run_to_end(desktop.session, program, "--status")
        assert "Cinnamon does not run Tessel's code" in output, output
        desktop.see("globalThis.isOpen = true")
        product.until_status("Active", STARTING)


# Borrowed keys


def actions_with(desktop: Cinnamon, mark: str) -> set[str]:
    return {shortcut["action"] for shortcut in desktop.status()["shortcuts"] if shortcut.get(mark)}


def asks(desktop: Cinnamon, option: str) -> None:
    ended, _, errors, _ = run_to_end(desktop.session, desktop.program, option, seconds=20.0)
    assert (ended, errors) == (0, ""), f"{option}: {ended}, {errors}"


def switches(desktop: Cinnamon, when: str) -> None:
    """Checks that the arrows are Cinnamon's: they switch workspaces, and show all of them and all windows."""
    for key, wanted in (("Right", 1), ("Left", 0)):
        desktop.hands.chord("Control", "Alt", key)
        until_equal(desktop.workspace, wanted, f"the workspace after {key} {when}")
    for key, view in (("Up", "expo"), ("Down", "overview")):
        desktop.hands.chord("Control", "Alt", key)
        until(lambda: desktop.see(f"Main.{view}.visible"), f"the view {view} {when}")
        desktop.hands.chord("Escape")
        until(lambda: not desktop.see(f"Main.{view}.visible || Main.modalCount > 0"), f"no view {view} {when}")


def until_taken(desktop: Cinnamon) -> None:
    until(lambda: desktop.taken() == HELD, "the taken keys to be reported", LOOK, desktop.status)


def until_borrowed(desktop: Cinnamon, product: Product, wanted=frozenset(HELD)) -> None:
    until(lambda: actions_with(desktop, "borrowed") == wanted, f"{sorted(wanted)} to be borrowed", LOOK, desktop.status)
    assert product.status == "Active", product.status


@case("desktop.cinnamon.borrowed")
def held_keys_are_ours_with_consent_and_cinnamons_again_afterwards(program):
    with Cinnamon(program, "cinnamon.borrowed", keys_free=False) as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        until_taken(desktop)
        assert actions_with(desktop, "canBeBorrowed") == HELD, desktop.status()
        switches(desktop, "without consent")

        asks(desktop, "--take-shortcuts")
        until_borrowed(desktop, product)
        desktop.activate(window)
        works(desktop, window, "with consent")
        assert desktop.workspace() == 0 and not desktop.see("Main.expo.visible || Main.overview.visible")

        # A binding without its key: the key is free, and held like any other.
        desktop.change_setting("org.cinnamon.desktop.keybindings.wm", "switch-to-workspace-left", "['<Super>Page_Up']")
        until_borrowed(desktop, product, HELD - {"leftHalf"})
        works(desktop, window, "after a binding was removed", ["leftHalf"])
        desktop.change_setting("org.cinnamon.desktop.keybindings.wm", "switch-to-workspace-left", "['<Control><Alt>Left']")
        until_borrowed(desktop, product)
        works(desktop, window, "after a binding was added", ["leftHalf"])

        asks(desktop, "--give-back-shortcuts")
        until_taken(desktop)
        switches(desktop, "after they were given back")

        asks(desktop, "--take-shortcuts")
        until_borrowed(desktop, product)
        desktop.session.processes.end(product.process, signal.SIGKILL)
        until(lambda: not desktop.has_part(), "the program's object to be gone")
        switches(desktop, "after the program was killed")


@case("desktop.cinnamon.bound-keys")
def a_key_that_is_bound_as_the_page_says_places_the_window(program):
    with Cinnamon(program, "cinnamon.bound-keys") as desktop:
        _, window = open_application(desktop, "mousepad")
        desktop.session.run(["sh", "-euc", keys_page.block("Cinnamon", program)])
        desktop.launch().until_status("Active")
        desktop.place(window, NATURAL)
        press_until_placed(lambda: desktop.hands.chord(*keys_page.CHORD), lambda: desktop.frame(window),
                           desktop.work_areas()[0])


# The item in the panel


def save_picture(desktop: Cinnamon, name: str) -> None:
    """Saves the screen for a person to look at, if a folder for pictures is named."""
    if folder := os.environ.get("TESSEL_DESKTOP_PICTURES"):
        Path(folder).mkdir(parents=True, exist_ok=True)
        save_screen(desktop.server.display, Path(folder) / f"{name}.png")


@case_for_each("desktop.cinnamon.item", ("by-name", "of-its-own-folder"))
def the_panel_draws_the_item(program, icons):
    with Cinnamon(program, f"cinnamon.item.{icons}", has_icons=icons == "by-name") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        until(desktop.has_item, "the item in the panel", STARTING, desktop.items)
        until_equal(desktop.shown_icon, ACTIVE, "the icon of an active program")
        save_picture(desktop, f"cinnamon.item.{icons}")
        choose(desktop, "Turn off")
        until_equal(desktop.shown_icon, PAUSED, "the icon of a program that is off")
        choose(desktop, "Turn on")
        until_equal(desktop.shown_icon, ACTIVE, "the icon of a program that is on again")



@case("desktop.cinnamon.popover")
def a_click_on_the_item_opens_the_popover_at_it(program):
    with Cinnamon(program, "cinnamon.popover") as desktop:
        _, other = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        until(desktop.has_item, "the item in the panel", STARTING, desktop.items)
        item = desktop.item_at_rest()
        desktop.hands.click(item.x + item.width // 2, item.y + item.height // 2)
        (window,) = until(lambda: desktop.windows_of(product.process.pid), "the popover to open")
        until_equal(desktop.focused, window, "the window with the keyboard")
        plate = desktop.at_rest(window).grown(-SHADOW, -SHADOW, -SHADOW, -SHADOW)
        bottom = plate.y + plate.height
        panel = desktop.work_areas()[0].height
        assert panel - 2 * GAP <= bottom <= item.y + item.height, f"{plate} does not stand on the panel at {panel}"
        assert 0 <= plate.x and plate.x + plate.width <= MONITOR.width, f"{plate} is cut off"
        assert plate.x <= item.x + item.width / 2 <= plate.x + plate.width, f"{plate} is not at {item}"
        assert desktop.see(f"one({window}).is_above() && one({window}).is_on_all_workspaces()")
        save_picture(desktop, "cinnamon.popover")
        desktop.hands.chord("Escape")
        until(lambda: not desktop.windows_of(product.process.pid), "the popover to close on Escape")
        until_equal(desktop.focused, other, "the window that has the keyboard again")
