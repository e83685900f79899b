"""Shortcuts on Wayfire, beside the user's bindings."""

import signal

from harness.holders import COMMON_PURPOSES, reported_obstacles, until_holders
from harness.oracle import ACTIONS
from harness.waiting import until
from harness.wayfire import WayfireDesktop
from harness.wayfire_ipc import Connection

from . import case
from .compositors import NATURAL, POLL, open_editor, taken, works

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
                status, _, errors, _ = desktop.ask_program("--quit")
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
