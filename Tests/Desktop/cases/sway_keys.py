"""Shortcuts on sway, beside the user's bindings and in other modes."""

from harness.holders import until_holders
from harness.oracle import ACTIONS
from harness.sway import SwayDesktop
from harness.sway_ipc import Listener
from harness.waiting import until, until_equal

from . import case
from .compositors import NATURAL, POLL, open_editor, taken, works

CONFLICTS = """
set $second Mod1
set $both Control+$second
bindsym $both+Left nop of the user left
bindsym --to-code --no-warn Alt+ctrl+C nop of the user c
bindcode Mod1+Ctrl+40 nop of the user d
mode "resize" {
    bindsym $both+Up nop in another mode
}
include more/*
"""
INCLUDED = """
bindsym --no-repeat {
    $both+Down nop of the user down
}
"""


def place_of(desktop: SwayDesktop, end: str) -> str:
    """File and number of the configuration's line that ends in this text, in the form for people."""
    folder = desktop.configuration.parent
    (place,) = [f"{file}:{number}" for file in (desktop.configuration, folder / "more/keys")
                for number, line in enumerate(file.read_text().splitlines(), start=1) if line.endswith(end)]
    return place.replace(f"{desktop.session.home}/", "~/")


@case("desktop.sway.keys.bell")
def without_a_window_the_bell_of_the_sound_theme_is_heard(program):
    with SwayDesktop(program, name="sway.keys.bell") as desktop:
        heard = desktop.session.runtime / "heard"
        players = desktop.session.directory / "players"
        players.mkdir()
        player = players / "canberra-gtk-play"
        player.write_text(f'#!/bin/sh\necho "$@" >>{heard}\n')
        player.chmod(0o755)
        path = f"{players}:{desktop.session.environment.get('PATH', '/usr/bin:/bin')}"
        product = desktop.launch(environment={"PATH": path})
        product.until_status("Active")
        for count in (1, 2):
            desktop.press(product, "leftHalf")
            until(lambda: heard.exists() and heard.read_text() == "--id=bell\n" * count, f"bell {count}")


@case("desktop.sway.keys.taken")
def keys_that_the_user_has_bound_stay_the_users_and_the_others_work(program):
    with SwayDesktop(program, CONFLICTS, name="sway.keys.taken") as desktop:
        more = desktop.configuration.parent / "more"
        more.mkdir()
        (more / "keys").write_text(INCLUDED)
        desktop.command("reload")
        window, product = open_editor(desktop), desktop.launch()
        product.until_status(taken("leftHalf", "center", "almostMaximize", "maximizeHeight"))
        keys = {"leftHalf": "left", "center": "c", "almostMaximize": "d", "maximizeHeight": "down"}
        until_holders(desktop.session, program,
                      {action: (f"sway, {place_of(desktop, 'nop of the user ' + key)}", f"nop of the user {key}")
                       for action, key in keys.items()}, prefix=desktop.session.prefix)
        for action in ("rightHalf", "maximize"):
            works(desktop, product, window, action, "beside the user's")
        listener = Listener(desktop.socket)
        product.until_at_rest()
        desktop.place(window, NATURAL)
        for action in ("leftHalf", "center", "almostMaximize", "maximizeHeight"):
            desktop.press(product, action)
        heard: list[str] = []
        whole = [f"nop of the user {key}" for key in ("left", "c", "d", "down")]
        until_equal(lambda: heard.extend(listener.commands()) or heard, whole, "the user's own bindings")
        assert desktop.frame(window) == NATURAL, "a key of the user's moved the window"
        listener.close()


@case("desktop.sway.keys.reload")
def reading_the_configuration_again_is_survived(program):
    with SwayDesktop(program, name="sway.keys.reload") as desktop:
        window, product = open_editor(desktop), desktop.launch()
        product.until_status("Active")
        desktop.command("reload")
        until(lambda: desktop.work_area(1).y > 0, "the bars to be there again", 20.0)
        for action in ACTIONS:
            works(desktop, product, window, action, "after reading the configuration again")
        desktop.configure("bindsym Ctrl+Alt+Left nop of the user\n")
        desktop.command("reload")
        product.until_status(taken("leftHalf"), POLL)
        until(lambda: desktop.work_area(1).y > 0, "the bars to be there again", 20.0)
        works(desktop, product, window, "rightHalf", "after a key was lost")
        desktop.configure("")
        desktop.command("reload")
        product.until_status("Active", POLL)
        until(lambda: desktop.work_area(1).y > 0, "the bars to be there again", 20.0)
        works(desktop, product, window, "leftHalf", "after the key was given back")


@case("desktop.sway.keys.mode")
def keys_belong_to_the_default_mode(program):
    modes = 'mode "resize" {\n    bindsym Escape mode "default"\n}\n'
    with SwayDesktop(program, modes, name="sway.keys.mode") as desktop:
        window = open_editor(desktop)
        desktop.command('mode "resize"')
        product = desktop.launch()
        product.until_status("Active")
        # Another mode has keys of its own.
        desktop.press(product, "maximize")
        assert desktop.frame(window) == NATURAL, f"a key acted in another mode: {desktop.frame(window)}"
        desktop.keyboard.chord("Escape")
        works(desktop, product, window, "maximize", "in the default mode")


@case("desktop.sway.keys.freed")
def the_program_ends_and_leaves_no_binding(program):
    with SwayDesktop(program, 'mode "resize" {\n    bindsym Escape mode "default"\n}\n', "sway.keys.freed") as desktop:
        window = open_editor(desktop)
        listener = Listener(desktop.socket)
        for way in ("terminated", "asked to quit", "ended in another mode"):
            product = desktop.launch()
            product.until_status("Active")
            desktop.press(product, "maximize")
            until(listener.commands, "the binding to be used")
            desktop.place(window, NATURAL)
            if way == "asked to quit":
                status, _, errors, _ = desktop.ask_program("--quit")
                assert status == 0, errors
                product.ended()
            elif way == "terminated":
                product.terminate()
            else:
                desktop.command('mode "resize"')
                product.terminate()
                desktop.command('mode "default"')
            for action in ACTIONS:
                desktop.keyboard.press(action)
            # An event of an earlier binding would have arrived before this one.
            desktop.command("bindsym Ctrl+Alt+F12 nop the end")
            desktop.keyboard.chord("Control", "Alt", "F12")
            heard: list[str] = []
            until(lambda: heard.extend(listener.commands()) or heard, "a binding made since")
            assert heard == ["nop the end"], f"{way}, the program left bindings: {heard}"
            assert desktop.frame(window) == NATURAL
        listener.close()
