"""App rules under GNOME Shell: the first window of a ruled application is placed at its launch, and no other."""

import sys
from typing import NamedTuple

from harness.applications import OWN_WINDOW
from harness.gnome import Gnome
from harness.oracle import centred
from harness.product import run_to_end
from harness.rect import Rect
from harness.waiting import STARTING, until, until_equal

from . import case
from .shells import APPLICATIONS, open_application

# The applications' names in a rule.
IDENTIFIERS = {"mousepad": "org.xfce.mousepad", "featherpad": "featherpad", "xterm": "debian-xterm"}
OWN = "org.example.Own"
OWN_SIZE = (420, 300)


class Launched(NamedTuple):
    process: object
    window: int


def start_with_rules(desktop: Gnome, rules: dict[str, str]):
    desktop.session.install(OWN, "StartupWMClass=OwnWindow")
    desktop.session.rules(rules)
    product = desktop.launch()
    product.until_status("Active")
    return product


def change_rule(desktop: Gnome, identifier: str, action: str) -> None:
    status, _, errors, _ = run_to_end(desktop.session, desktop.program, "--rule", identifier, action)
    assert status == 0, errors


def start_own(desktop: Gnome, *wishes: str):
    """Starts our own test window, an X11 client."""
    return desktop.session.start([sys.executable, OWN_WINDOW, *wishes], "own", desktop.x11_environment())


def window_of(desktop: Gnome, process) -> Launched:
    (window,) = until(lambda: desktop.windows_of(process.pid), "a window to appear", STARTING)
    return Launched(process, window)


def launch(desktop: Gnome, name: str) -> Launched:
    return Launched(*open_application(desktop, name))


def another(desktop: Gnome, process, ask) -> int:
    """One more window of the process, which opens after a call of `ask`."""
    before = desktop.windows_of(process.pid)
    ask()
    (window,) = until(lambda: [each for each in desktop.windows_of(process.pid) if each not in before],
                      "another window", 10.0)
    return window


def close_window(desktop: Gnome, launched: Launched, window: int) -> None:
    desktop.see(f"one({window}).delete(global.get_current_time())")
    until(lambda: window not in desktop.windows_of(launched.process.pid), "the window to be closed")


def end(desktop: Gnome, *all_launched: Launched) -> None:
    for launched in all_launched:
        desktop.session.processes.end(launched.process)
        until(lambda: not desktop.windows_of(launched.process.pid), "its windows to be gone")


def is_placed(desktop: Gnome, window: int, action: str, monitor: int = 0, sizes=lambda asked: asked) -> None:
    def wanted() -> Rect:
        area = desktop.work_areas()[monitor]
        return centred(sizes(area.size) if action == "maximize" else desktop.frame(window).size, area)

    until(lambda: desktop.frame(window) == wanted(), f"the window to stand as by {action}", 5.0,
          lambda: f"{desktop.frame(window)}, wanted {wanted()}")


def stays(desktop: Gnome, product, window: int, what: str) -> None:
    """Checks that no placement is pending for the window, and that it is not where a rule would have put it."""
    product.until_at_rest()
    frame = desktop.at_rest(window)
    product.until_at_rest()
    assert frame.size not in [area.size for area in desktop.work_areas()], f"{what} was placed: {frame}"


@case("desktop.gnome.rules.first-window")
def the_first_window_of_every_kind_of_application_is_placed(program):
    with Gnome(program, "gnome.rules.first-window") as desktop:
        product = start_with_rules(desktop, {identifier: "maximize" for identifier in IDENTIFIERS.values()})
        for name in APPLICATIONS:
            # The second time it restores its last position.
            for action in ("maximize", "center", "maximize"):
                change_rule(desktop, IDENTIFIERS[name], action)
                launched = launch(desktop, name)
                sizes = desktop.sizes_of_steps(launched.window) if name == "xterm" else lambda asked: asked
                is_placed(desktop, launched.window, action, sizes=sizes)
                end(desktop, launched)
        # A removed rule no longer applies, not even to windows that it has just placed.
        change_rule(desktop, OWN, "maximize")
        launched = window_of(desktop, start_own(desktop))
        is_placed(desktop, launched.window, "maximize")
        end(desktop, launched)
        change_rule(desktop, OWN, "none")
        stays(desktop, product, window_of(desktop, start_own(desktop)).window, "a window after the rule was removed")


@case("desktop.gnome.rules.restored")
def a_window_that_its_application_puts_back_is_placed_once_more(program):
    with Gnome(program, "gnome.rules.restored") as desktop:
        start_with_rules(desktop, {OWN: "maximize"})
        launched = window_of(desktop, start_own(desktop, "--restores"))
        log = desktop.session.logs / "own.log"
        until(lambda: "restored" in log.read_text(), "the application to put its window back", saw=log.read_text)
        is_placed(desktop, launched.window, "maximize")


@case("desktop.gnome.rules.only-the-first")
def other_windows_and_windows_of_other_kinds_are_left_alone(program):
    with Gnome(program, "gnome.rules.only-the-first") as desktop:
        product = start_with_rules(desktop, {OWN: "maximize", IDENTIFIERS["mousepad"]: "maximize"})
        # Windows that are no ordinary windows do not use the rule up.
        for kind in ("DIALOG", "SPLASH", "UTILITY"):
            launched = window_of(desktop, start_own(desktop, "--type", kind))
            stays(desktop, product, launched.window, f"a {kind.lower()}")
            end(desktop, launched)

        first = launch(desktop, "mousepad")
        is_placed(desktop, first.window, "maximize")
        dialog = another(desktop, first.process, lambda: desktop.hands.chord("Control", "O"))
        stays(desktop, product, dialog, "a dialog")
        close_window(desktop, first, dialog)
        desktop.activate(first.window)
        second = another(desktop, first.process, lambda: desktop.hands.chord("Control", "Shift", "N"))
        # An application may open a window in the size of the previous one.
        desktop.place(second, Rect(211, 173, 662, 503))
        desktop.activate(second)
        third = another(desktop, first.process, lambda: desktop.hands.chord("Control", "Shift", "N"))
        stays(desktop, product, third, "a third window")
        is_placed(desktop, first.window, "maximize")
        for window in (third, second, first.window):
            close_window(desktop, first, window)
        # All are closed, so the next window is a first window again.
        until(lambda: first.process.poll() is not None, "the application to end with its last window")
        is_placed(desktop, launch(desktop, "mousepad").window, "maximize")


@case("desktop.gnome.rules.processes")
def every_process_has_a_first_window_and_many_may_start_together(program):
    with Gnome(program, "gnome.rules.processes") as desktop:
        names = [f"Application{number}" for number in range(6)]
        for name in names:
            desktop.session.install(f"org.example.{name}", f"StartupWMClass={name}")
        applications = {"mousepad": "maximize", "featherpad": "center"}
        start_with_rules(desktop, {
            **{f"org.example.{name}": "maximize" for name in names},
            **{IDENTIFIERS[name]: action for name, action in applications.items()},
        })
        # The first two of them twice.
        started = [(start_own(desktop, "--class-name", name), "maximize") for name in names + names[:2]]
        for name, action in applications.items():
            started.append((desktop.session.start(*APPLICATIONS[name][:1], name, APPLICATIONS[name][1]), action))
        for process, action in started:
            is_placed(desktop, window_of(desktop, process).window, action)


@case("desktop.gnome.rules.changed")
def a_rule_holds_from_the_moment_that_it_is_made(program):
    with Gnome(program, "gnome.rules.changed") as desktop:
        product = start_with_rules(desktop, {})
        launched = window_of(desktop, start_own(desktop))
        change_rule(desktop, OWN, "maximize")
        stays(desktop, product, launched.window, "a window that was open before the rule")
        change_rule(desktop, IDENTIFIERS["mousepad"], "maximize")
        placed = launch(desktop, "mousepad")
        is_placed(desktop, placed.window, "maximize")
        # A changed rule moves no open window.
        change_rule(desktop, IDENTIFIERS["mousepad"], "center")
        stays(desktop, product, launched.window, "a window that was open before the rule")
        is_placed(desktop, placed.window, "maximize")


@case("desktop.gnome.rules.elsewhere")
def a_window_is_placed_on_the_monitor_and_the_workspace_that_it_opens_on(program):
    with Gnome(program, "gnome.rules.elsewhere") as desktop:
        start_with_rules(desktop, {OWN: "maximize", IDENTIFIERS["mousepad"]: "maximize"})
        # The shell opens windows at the pointer, unless they specify a position.
        for number, place in ((1, ("1810", "190")), (0, ("240", "180"))):
            area = desktop.work_areas()[number]
            desktop.hands.point(area.x + area.width // 2, area.y + area.height // 2)
            for launched in (launch(desktop, "mousepad"),
                             window_of(desktop, start_own(desktop, "--place", *place, *map(str, OWN_SIZE)))):
                is_placed(desktop, launched.window, "maximize", number)
                end(desktop, launched)
        # Like an extension that keeps an application on a workspace of its own.
        desktop.see("(globalThis.mover = global.display.connect('window-created', "
                    "(_display, window) => window.change_workspace_by_index(1, true))) > 0")
        windows = []
        for process in (start_own(desktop),
                        desktop.session.start(*APPLICATIONS["mousepad"][:1], "mousepad", APPLICATIONS["mousepad"][1])):
            (window,) = until(
                lambda: desktop.see(f"windows().filter(w => w.get_pid() === {process.pid}).map(w => w.get_id())"),
                "a window on another workspace", 15.0)
            windows.append(window)
        # An X11 program is moved at once; a Wayland program does not draw a hidden window.
        is_placed(desktop, windows[0], "maximize")
        for window in windows:
            until_equal(lambda: desktop.see(f"one({window}).get_workspace().index()"), 1, "the workspace of the window")
        assert desktop.see("global.workspace_manager.get_active_workspace_index()") == 0, "another workspace is shown"
        # Shown without an animation: the shell's animation between workspaces misbehaves when a window in it moves.
        for window in windows:
            desktop.see(f"one({window}).change_workspace_by_index(0, false)")
            is_placed(desktop, window, "maximize")
        desktop.see("global.display.disconnect(globalThis.mover) ?? true")


@case("desktop.gnome.rules.present")
def open_windows_stay_in_place(program):
    with Gnome(program, "gnome.rules.present") as desktop:
        launched = launch(desktop, "mousepad")
        before = desktop.at_rest(launched.window)
        product = start_with_rules(desktop, {IDENTIFIERS[name]: "maximize" for name in ("mousepad", "featherpad")})
        desktop.switch_extension(False)
        product.until_status("Waiting for permission", 20.0)
        meanwhile = launch(desktop, "featherpad")
        desktop.switch_extension(True)
        product.until_status("Active", 20.0)
        product.until_at_rest()
        assert desktop.at_rest(launched.window) == before, "a window that was there was placed"
        stays(desktop, product, meanwhile.window, "a window that opened without an event")
