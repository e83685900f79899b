"""Cases that are the same on sway and on Wayfire."""

import signal
from dataclasses import replace
from functools import partial
from pathlib import Path

from harness.applications import APPLICATIONS, Application
from harness.compositor import ApplicationWindow, CompositorDesktop
from harness.oracle import ACTIONS, centred, expected
from harness.rect import Rect
from harness.sway import SwayDesktop
from harness.waiting import throughout, until
from harness.wayfire import WayfireDesktop

from . import case

NATURAL = Rect(311, 173, 762, 503)
# The program checks its permission every two seconds, up to ten seconds late; keys are registered again after two
# checks.
POLL = 26.0

DESKTOPS = {"sway": SwayDesktop, "wayfire": WayfireDesktop}
XTERM = replace(APPLICATIONS["xterm"], environment={"WAYLAND_DISPLAY": ""})


def case_on_each(subject: str):
    """Adds a case for each desktop, as in "desktop.sway.restart"; the function starts the desktop that it takes."""

    def add(function):
        for word, desktop in DESKTOPS.items():
            name = f"{word}.{subject}"
            case(f"desktop.{name}")(
                lambda program, desktop=desktop, name=name: function(partial(desktop, program, name=name)))
        return function

    return add


def taken(*actions: str) -> str:
    return "Some shortcuts are taken: " + ", ".join(action for action in ACTIONS if action in actions)


def works(desktop: CompositorDesktop, product, window: int, action: str, when: str) -> None:
    product.until_at_rest()
    desktop.place(window, NATURAL)
    desktop.press(product, action)
    wanted = expected(action, NATURAL, desktop.work_area(), lambda size: size)
    desktop.holds_frame(window, wanted, f"frame after {action} {when}")


def open_editor(desktop: CompositorDesktop) -> int:
    window = desktop.open(APPLICATIONS["mousepad"]).number
    desktop.place(window, NATURAL)
    return window


def start_with_rules(desktop: CompositorDesktop, rules: dict[str, str]):
    desktop.session.rules(rules)
    product = desktop.launch()
    product.until_status("Active")
    return product


def launch(desktop: CompositorDesktop, application: Application) -> ApplicationWindow:
    running = desktop.launch_application(application)
    desktop.wait_for(running)
    return running


def is_placed(desktop: CompositorDesktop, running: ApplicationWindow, action: str, output: int = 0) -> None:
    def wanted() -> Rect:
        visible = desktop.work_area(output)
        return visible if action == "maximize" else centred(desktop.frame(running.number).size, visible)

    until(
        lambda: not desktop.is_in_layout(running.number) and desktop.frame(running.number) == wanted(),
        f"{running.application.name} to stand as by {action}", 5.0,
        lambda: f"{desktop.window(running.number)}, wanted {wanted()}",
    )


def switches(process_id: int) -> int:
    """The number of voluntary context switches of the process."""
    for line in Path(f"/proc/{process_id}/status").read_text().splitlines():
        if line.startswith("voluntary_ctxt_switches"):
            return int(line.split()[1])
    raise AssertionError("the kernel does not count")


@case_on_each("keys.locks")
def lock_keys_change_nothing(start):
    with start() as desktop:
        window, product = open_editor(desktop), desktop.launch()
        for locks in (("CapsLock",), ("NumLock",), ("CapsLock", "NumLock")):
            for lock in locks:
                desktop.keyboard.lock(lock, True)
            for action in ACTIONS:
                works(desktop, product, window, action, f"with {' and '.join(locks)}")
            for lock in locks:
                desktop.keyboard.lock(lock, False)


@case_on_each("keys.layouts")
def keys_are_places_whatever_the_layout_prints_on_them(start):
    with start() as desktop:
        window, product = open_editor(desktop), desktop.launch()
        for layout in ("ru", "gr", "fr", "us(dvorak)"):
            desktop.keyboard.use(layout)
            for action in ACTIONS:
                works(desktop, product, window, action, f"in the layout {layout}")


@case_on_each("keys.held")
def a_key_that_is_held_counts_once(start):
    with start() as desktop:
        window, product = open_editor(desktop), desktop.launch()
        desktop.keyboard.hold("Control", "Alt", "Up")
        desktop.holds_frame(window, desktop.work_area(), "the maximized frame")
        product.until_at_rest()
        desktop.place(window, NATURAL)
        # Keys repeat after 0.6 s at the latest, 25 times in a second or more.
        throughout(1.5, lambda: desktop.frame(window) == NATURAL, "left alone while the key was held",
                   lambda: desktop.frame(window))
        desktop.keyboard.release("Control", "Alt", "Up")


@case_on_each("rules.first-window")
def the_first_window_of_every_kind_of_program_is_placed(start):
    with start() as desktop:
        start_with_rules(desktop, {
            "org.xfce.mousepad": "maximize", "featherpad": "center", "debian-xterm": "maximize",
        })
        for application, action in (
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["featherpad"], "center"), (XTERM, "maximize"),
            # Again, when it restores its last position.
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["mousepad"], "maximize"),
        ):
            running = launch(desktop, application)
            is_placed(desktop, running, action)
            desktop.end(running)


@case_on_each("idle")
def it_sleeps_while_nothing_happens(start):
    with start() as desktop:
        editor = desktop.open(APPLICATIONS["mousepad"]).number
        product = desktop.launch()
        product.until_status("Active")
        product.until_at_rest()
        before = switches(product.process.pid)
        woken = lambda: switches(product.process.pid) - before
        step = 0

        def asleep() -> bool:
            # A window that is dragged about concerns nobody.
            nonlocal step
            step += 1
            desktop.drag(editor, step)
            return woken() <= 12

        # Only the periodic checks for the permission remain, every two seconds and up to ten late.
        throughout(12.0, asleep, "asleep but for 12 times in 12 s", woken)


@case_on_each("restart")
def a_compositor_that_starts_anew_is_found(start):
    with start() as desktop:
        product = desktop.launch()
        product.until_status("Active")
        desktop.session.processes.end(desktop.compositor, signal.SIGKILL)
        product.until_status("Waiting for permission", POLL)
        desktop.restart()
        product.until_status("Active", POLL)
        window = open_editor(desktop)
        for action in ACTIONS:
            works(desktop, product, window, action, "after the restart")


@case_on_each("hangs")
def a_compositor_that_hangs_is_found_again(start):
    with start() as desktop:
        window, product = open_editor(desktop), desktop.launch()
        product.until_status("Active")
        desktop.compositor.send_signal(signal.SIGSTOP)
        for _ in range(12):
            # Each waits for a few turns at the most, so the program stays usable.
            status, _, errors, seconds = desktop.ask_program("--perform", "left-half")
            assert status == 1 and errors, "an action that nobody has carried out counts as done"
            assert seconds < 3, f"it took {seconds:.1f} s"
        desktop.compositor.send_signal(signal.SIGCONT)
        product.until_status("Active", POLL)
        for action in ACTIONS:
            works(desktop, product, window, action, "after the compositor hung")


@case_on_each("gone")
def the_program_ends_after_its_compositor(start):
    with start() as desktop:
        product = desktop.launch()
        product.until_status("Active")
        desktop.stop()
        # Before the user can log in again: otherwise a program of the next session would find this one still running.
        assert product.ended(10.0) == 1
        assert f"{desktop.title} is gone" in product.errors()
