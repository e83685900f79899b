"""Shortcuts on Wayfire: with every state of the keyboard, and beside the user's bindings."""

import signal

from harness.applications import APPLICATIONS
from harness.holders import COMMON_PURPOSES, reported_obstacles, until_holders
from harness.oracle import ACTIONS, expected
from harness.product import run_to_end
from harness.rect import Rect
from harness.waiting import throughout, until
from harness.wayfire import WayfireDesktop
from harness.wayfire_ipc import Connection

from . import case

NATURAL = Rect(311, 173, 762, 503)
# The program checks its permission every two seconds, up to ten seconds late; keys are registered again after two
# checks.
POLL = 26.0

# By a single option, in a list, as one of two alternatives, always, and at the release.
CONFLICTS = """
[vswitch]
binding_left = <alt> <ctrl> KEY_LEFT
[command]
binding_mine = <super> KEY_X | <ctrl> <alt> KEY_C
command_mine = touch {folder}/c
always_binding_other = <ctrl><alt>KEY_D
command_other = touch {folder}/d
release_binding_third = <ctrl> <alt> KEY_DOWN
command_third = touch {folder}/down
[wobbly]
toggle = <ctrl> <alt> KEY_UP
"""


def taken(*actions: str) -> str:
    return "Some shortcuts are taken: " + ", ".join(action for action in ACTIONS if action in actions)


def works(desktop: WayfireDesktop, product, window: int, action: str, when: str) -> None:
    product.until_at_rest()
    desktop.place(window, NATURAL)
    desktop.press(product, action)
    wanted = expected(action, NATURAL, desktop.work_area(), lambda size: size)
    desktop.holds_frame(window, wanted, f"frame after {action} {when}")


def open_editor(desktop: WayfireDesktop) -> int:
    window = desktop.open(APPLICATIONS["mousepad"]).number
    desktop.place(window, NATURAL)
    return window


@case("desktop.wayfire.keys.locks")
def lock_keys_change_nothing(program):
    with WayfireDesktop(program, name="wayfire.keys.locks") as desktop:
        window, product = open_editor(desktop), desktop.launch()
        for locks in (("CapsLock",), ("NumLock",), ("CapsLock", "NumLock")):
            for lock in locks:
                desktop.keyboard.lock(lock, True)
            for action in ACTIONS:
                works(desktop, product, window, action, f"with {' and '.join(locks)}")
            for lock in locks:
                desktop.keyboard.lock(lock, False)


@case("desktop.wayfire.keys.layouts")
def keys_are_places_whatever_the_layout_prints_on_them(program):
    with WayfireDesktop(program, name="wayfire.keys.layouts") as desktop:
        window, product = open_editor(desktop), desktop.launch()
        for layout in ("ru", "fr", "us(dvorak)"):
            desktop.keyboard.use(layout)
            for action in ACTIONS:
                works(desktop, product, window, action, f"in the layout {layout}")


@case("desktop.wayfire.keys.held")
def a_key_that_is_held_counts_once(program):
    with WayfireDesktop(program, name="wayfire.keys.held") as desktop:
        window = open_editor(desktop)
        product = desktop.launch()
        desktop.keyboard.hold("Control", "Alt", "Up")
        desktop.holds_frame(window, desktop.work_area(), "the maximized frame")
        product.until_at_rest()
        desktop.place(window, NATURAL)
        # Keys repeat after 0.4 s, 40 times in a second.
        throughout(1.5, lambda: desktop.frame(window) == NATURAL, "left alone while the key was held",
                   lambda: desktop.frame(window))
        desktop.keyboard.release("Control", "Alt", "Up")


@case("desktop.wayfire.keys.taken")
def keys_that_the_user_has_bound_stay_the_users_and_the_others_work(program):
    with WayfireDesktop(program, name="wayfire.keys.taken") as desktop:
        folder = desktop.session.directory / "touched"
        folder.mkdir()
        desktop.configure(CONFLICTS.format(folder=folder))
        option = "wayfire/get-config-option"
        until(lambda: len(desktop.connection.ask(option, option="command/bindings")["value"]) == 1, "the configuration")
        window, product = open_editor(desktop), desktop.launch()
        product.until_status(taken("leftHalf", "center", "almostMaximize", "maximizeHeight"))
        until_holders(desktop.session, program, {
            "leftHalf": ("Wayfire, wayfire.ini [vswitch] binding_left", COMMON_PURPOSES["leftHalf"]),
            "center": ("Wayfire, wayfire.ini [command] binding_mine", f"touch {folder}/c"),
            "almostMaximize": ("Wayfire, wayfire.ini [command] always_binding_other", f"touch {folder}/d"),
            "maximizeHeight": ("Wayfire, wayfire.ini [command] release_binding_third", f"touch {folder}/down"),
        })
        assert set(reported_obstacles(desktop.session, program).values()) == {"notReleased"}
        # "wobbly" is not in use, so its option binds nothing.
        for action in ("rightHalf", "maximize"):
            works(desktop, product, window, action, "beside the user's")
        desktop.place(window, NATURAL)
        for action in ("center", "almostMaximize", "maximizeHeight"):
            desktop.press(product, action)
        until(lambda: {file.name for file in folder.iterdir()} == {"c", "d", "down"}, "the user's own bindings")
        product.until_at_rest()
        assert desktop.frame(window) == NATURAL, "a key of the user's moved the window"


@case("desktop.wayfire.keys.changed")
def bindings_that_the_user_changes_are_followed(program):
    with WayfireDesktop(program, name="wayfire.keys.changed") as desktop:
        window, product = open_editor(desktop), desktop.launch()
        product.until_status("Active")
        touched = desktop.session.directory / "touched"
        desktop.configure(f"[command]\nbinding_mine = <ctrl> <alt> KEY_RIGHT\ncommand_mine = touch {touched}\n")
        product.until_status(taken("rightHalf"), POLL)
        works(desktop, product, window, "leftHalf", "after a key was lost")
        desktop.place(window, NATURAL)
        desktop.press(product, "rightHalf")
        until(touched.exists, "the user's own binding")
        assert desktop.window(window).goal == NATURAL, "the key of the user moved the window"
        desktop.configure("")
        product.until_status("Active", POLL)
        works(desktop, product, window, "rightHalf", "after the key was given back")


@case("desktop.wayfire.keys.freed")
def the_program_ends_and_leaves_no_binding(program):
    with WayfireDesktop(program, name="wayfire.keys.freed") as desktop:
        window = open_editor(desktop)
        for way in ("terminated", "asked to quit", "killed"):
            product = desktop.launch()
            product.until_status("Active")
            works(desktop, product, window, "maximize", f"before the program is {way}")
            desktop.place(window, NATURAL)
            if way == "asked to quit":
                status, _, errors, _ = run_to_end(desktop.session, program, "--quit")
                assert status == 0, errors
                product.ended()
            elif way == "terminated":
                product.terminate()
            else:
                desktop.session.processes.end(product.process, signal.SIGKILL)
            # Keys that nobody holds reach the window with the focus, and another program may have them alone.
            other = Connection(desktop.socket)
            until(lambda: gets_the_keys(desktop, other), f"the keys to be free after the program was {way}")
            other.close()
            assert desktop.frame(window) == NATURAL


def gets_the_keys(desktop: WayfireDesktop, other: Connection) -> bool:
    """Whether another program gets all six keys. (Two that hold the same ones would both get them.)"""
    names = {"leftHalf": "LEFT", "rightHalf": "RIGHT", "center": "C", "maximize": "UP", "almostMaximize": "D",
             "maximizeHeight": "DOWN"}
    numbers = {
        action: other.ask("command/register-binding", binding=f"<ctrl> <alt> KEY_{names[action]}")["binding-id"]
        for action in ACTIONS
    }
    other.take_events()
    heard: list[int] = []
    for action in ACTIONS:
        desktop.keyboard.press(action)
    until(lambda: heard.extend(event["binding-id"] for event in other.take_events()) or len(heard) >= len(ACTIONS),
          "the other program's keys", saw=lambda: heard)
    for number in numbers.values():
        other.ask("command/unregister-binding", **{"binding-id": number})
    return heard == list(numbers.values())


@case("desktop.wayfire.restart")
def a_compositor_that_starts_anew_is_found(program):
    with WayfireDesktop(program, name="wayfire.restart") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        desktop.session.processes.end(desktop.compositor, signal.SIGKILL)
        product.until_status("Waiting for permission", POLL)
        desktop.restart()
        product.until_status("Active", POLL)
        window = open_editor(desktop)
        for action in ACTIONS:
            works(desktop, product, window, action, "after the restart")


@case("desktop.wayfire.hangs")
def a_compositor_that_hangs_is_found_again(program):
    with WayfireDesktop(program, name="wayfire.hangs") as desktop:
        window, product = open_editor(desktop), desktop.launch()
        product.until_status("Active")
        desktop.compositor.send_signal(signal.SIGSTOP)
        for _ in range(12):
            # Each waits no longer than a turn, so the program stays usable.
            _, _, _, seconds = run_to_end(desktop.session, program, "--perform", "left-half")
            assert seconds < 3, f"it took {seconds:.1f} s"
        desktop.compositor.send_signal(signal.SIGCONT)
        product.until_status("Active", POLL)
        for action in ACTIONS:
            works(desktop, product, window, action, "after the compositor hung")


@case("desktop.wayfire.gone")
def the_program_ends_after_its_compositor(program):
    with WayfireDesktop(program, name="wayfire.gone") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        desktop.stop()
        # Before the user can log in again: otherwise a program of the next session would find this one still running.
        assert product.ended(10.0) == 1
        assert "Wayfire is gone" in product.errors()
