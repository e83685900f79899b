"""Keys that the user's own configuration of a tiling window manager binds, borrowed with consent.

The user's lines are inactive while the program runs, and active again however it ends."""

import json
import os
import shutil
import signal
import time
from pathlib import Path

from harness.applications import APPLICATIONS
from harness.holders import reported_obstacles
from harness.i3 import I3Desktop
from harness.oracle import ACTIONS
from harness.product import Product, run_to_end
from harness.sway import SwayDesktop
from harness.sway_ipc import GET_BINDING_STATE, Listener
from harness.waiting import until, until_equal

from . import case
from .borrowed import CALM
from .i3_life import works as works_on_i3
from .compositors import NATURAL, POLL, open_editor, taken, works

# The lines cover all kinds of bindings that sway distinguishes. The last one uses a combination that nothing else
# binds: its command shows that those before it have been handled.
LINES = """
set $both Control+Mod1
bindsym $both+Left nop left, nop "of; the 'user'"
bindsym --to-code $both+c nop c
bindcode --locked --no-repeat $both+40 nop d
bindsym --release Mod1+Ctrl+Up nop up
bindsym --input-device=* --inhibited $both+Right nop right
mode "resize" {
    bindsym Escape mode "default"
}
bindsym $both+F12 nop the end
"""
LENT = ("leftHalf", "rightHalf", "center", "maximize", "almostMaximize")
PARTICULAR = "bindsym Group1+Ctrl+Mod1+Down nop of one layout\n"


def ask(desktop, program, *options: str) -> str:
    ended, output, errors, _ = run_to_end(
        desktop.session, program, *options, seconds=20.0, prefix=desktop.session.prefix)
    assert (ended, errors) == (0, ""), f"{options}: {ended}, {errors}"
    return output


def borrowed(desktop, program) -> set[str]:
    """The actions whose shortcut is borrowed, by the program's own report."""
    shortcuts = json.loads(ask(desktop, program, "--status", "--json"))["shortcuts"]
    return {shortcut["action"] for shortcut in shortcuts if shortcut.get("borrowed")}


def heard(desktop: SwayDesktop, listener: Listener) -> list[str]:
    """The commands of the user's lines that have been used, and no others."""
    desktop.keyboard.chord("Control", "Alt", "F12")
    commands: list[str] = []
    until(lambda: commands.extend(listener.commands()) or "nop the end" in commands, "a binding of other keys",
          saw=lambda: commands)
    return [command for command in commands if not command.startswith("nop tessel") and command != "nop the end"]


def used(desktop: SwayDesktop, listener: Listener, actions=LENT) -> list[str]:
    """The commands of the user's lines at the keys of these actions, one after the other."""
    heard(desktop, listener)
    for action in actions:
        desktop.keyboard.press(action)
    return heard(desktop, listener)


def users_lines_act(desktop: SwayDesktop, window: int, listener: Listener, own: list[str], when: str) -> None:
    desktop.place(window, NATURAL)
    assert (acted := used(desktop, listener)) == own, f"{acted} are not the user's lines {when}"
    assert desktop.frame(window) == NATURAL, f"a key of the user's moved the window {when}"


def works_alone(desktop: SwayDesktop, product: Product, window: int, listener: Listener, when: str) -> None:
    heard(desktop, listener)
    for action in ACTIONS:
        works(desktop, product, window, action, when)
    assert heard(desktop, listener) == [], f"a line of the user's acted {when}"


def until_bars(desktop: SwayDesktop) -> None:
    until(lambda: desktop.work_area(1).y > 0, "the bars to be there again", 20.0)


@case("desktop.borrowed.sway")
def lines_of_sways_configuration_rest_while_their_keys_are_borrowed(program):
    with SwayDesktop(program, LINES, "borrowed.sway") as desktop:
        window, listener = open_editor(desktop), Listener(desktop.socket)
        own = used(desktop, listener)
        assert len(set(own)) == len(LENT), f"the user's lines do {own}"
        product = desktop.launch()
        product.until_status(taken(*LENT))
        users_lines_act(desktop, window, listener, own, "without consent")

        ask(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        works_alone(desktop, product, window, listener, "with consent")
        assert borrowed(desktop, program) == set(LENT)

        ask(desktop, program, "--give-back-shortcuts")
        product.until_status(taken(*LENT))
        users_lines_act(desktop, window, listener, own, "after they were given back")

        ask(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        product.terminate()
        users_lines_act(desktop, window, listener, own, "after the program has ended")

        product = desktop.launch()
        product.until_status("Active")
        works_alone(desktop, product, window, listener, "at the next start")
        desktop.command("reload")
        until_bars(desktop)
        works_alone(desktop, product, window, listener, "after reading the configuration again")

        without_left = {action for action in LENT if action != "leftHalf"}
        desktop.configure("\n".join(line for line in LINES.splitlines() if "nop left" not in line))
        desktop.command("reload")
        until(lambda: borrowed(desktop, program) == without_left, "a key that the user has freed to be ours", POLL,
              lambda: borrowed(desktop, program))
        product.until_status("Active", POLL)
        until_bars(desktop)
        works_alone(desktop, product, window, listener, "after the user has freed a key")

        desktop.configure(LINES + PARTICULAR)
        desktop.command("reload")
        product.until_status(taken("maximizeHeight"), POLL)
        prefix = desktop.session.prefix
        assert reported_obstacles(desktop.session, program, prefix) == {"maximizeHeight": "particularLine"}
        until_bars(desktop)
        desktop.place(window, NATURAL)
        desktop.press(product, "maximizeHeight")
        assert heard(desktop, listener) == ["nop of one layout"], "a line that is not lent has to act"
        works(desktop, product, window, "leftHalf", "beside a line that is not lent")
        product.terminate()
        users_lines_act(desktop, window, listener, own, "at last")
        listener.close()


def who_waits(desktop: SwayDesktop) -> list[Path]:
    """The shells that wait for the end of a program on this desktop; their parent has ended."""
    waiting = []
    for process in Path("/proc").glob("[0-9]*"):
        try:
            words = (process / "cmdline").read_bytes().split(b"\0")
        except OSError:
            continue
        if words[0] == b"sh" and str(desktop.socket).encode() in words:
            waiting.append(process)
    return waiting


def has_ended(process: Path) -> bool:
    """Also if its parent has not yet waited for it."""
    try:
        return (process / "cmdline").read_bytes() == b""
    except OSError:
        return True


@case("desktop.borrowed.sway.killed")
def lines_of_sways_configuration_act_again_when_the_program_is_killed(program):
    with SwayDesktop(program, LINES, "borrowed.sway.killed") as desktop:
        window, listener = open_editor(desktop), Listener(desktop.socket)
        own = used(desktop, listener)
        product = desktop.launch()
        product.until_status(taken(*LENT))
        assert who_waits(desktop) == [], "without consent nobody waits for the program's end"
        ask(desktop, program, "--take-shortcuts")
        for mode in ("default", "resize"):
            product.until_status("Active")
            works_alone(desktop, product, window, listener, f"before it is killed in mode {mode}")
            desktop.command(f'mode "{mode}"')
            (waiting,) = who_waits(desktop)
            product.process.kill()
            product.process.wait()
            until(lambda: has_ended(waiting), "who waits for the program's end to be done")
            assert desktop.connection.ask(GET_BINDING_STATE)["name"] == mode
            desktop.command('mode "default"')
            users_lines_act(desktop, window, listener, own, f"after the program was killed in mode {mode}")
            product = desktop.launch()

        # Both are killed: sway keeps the bindings over the user's lines until the next start of the program removes
        # them.
        product.until_status("Active")
        (waiting,) = who_waits(desktop)
        os.kill(int(waiting.name), signal.SIGKILL)
        product.process.kill()
        product.process.wait()
        until(lambda: has_ended(waiting), "who waits for the program's end to be gone")
        assert used(desktop, listener) == [], "no process could have sent sway the commands"
        shutil.rmtree(desktop.session.home / ".config/tessel")
        product = desktop.launch()
        product.until_status(taken(*LENT))
        users_lines_act(desktop, window, listener, own, "at the next start without consent")
        ask(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        ask(desktop, program, "--give-back-shortcuts")
        until(lambda: not who_waits(desktop), "nobody to wait for the program's end any more")
        listener.close()


BOUND = "bindsym Control+Mod1+Left mark --add left\nbindsym Mod1+Ctrl+c mark --add c\nbindsym Mod1+Ctrl+a mark --add other\n"
BOUND_ACTIONS = {"leftHalf": "left", "center": "c"}


def users_bindings_act(desktop: I3Desktop, window: int, when: str) -> None:
    desktop.tile(window)
    before = desktop.windows.frame(window)
    for action, mark in BOUND_ACTIONS.items():

        def acts(action=action, mark=mark) -> bool:
            # The server may still be releasing the grabs of a program that has just ended.
            desktop.keyboard.press(action)
            desktop.windows.fence()
            return mark in desktop.marks()

        until(acts, f"the user's own binding of {action} {when}", saw=desktop.marks)
        desktop.command(f"unmark {mark}")
    assert desktop.windows.frame(window) == before, f"a key of the user's moved the window {when}"


def works_alone_on_i3(desktop: I3Desktop, product: Product, window: int, when: str, seconds: float = 5.0) -> None:
    """i3 renews its grabs at a reload, and for another keyboard; the program renews its own after it each time."""
    came = time.monotonic()

    def is_ours() -> bool:
        nonlocal came
        desktop.keyboard.press("leftHalf")
        product.until_at_rest()
        desktop.windows.fence()
        if desktop.marks():
            came = time.monotonic()
            desktop.command("unmark left")
        return time.monotonic() - came > CALM

    until(is_ours, f"the program to have the borrowed keys {when}", seconds)
    works_on_i3(desktop, product, window, when)
    assert desktop.marks() == [], f"i3 has seen a borrowed key {when}"
    desktop.keyboard.chord("Control", "Alt", "A")
    until_equal(desktop.marks, ["other"], "the marks of a binding of other keys")
    desktop.command("unmark other")


@case("desktop.borrowed.i3")
def bindings_of_i3s_configuration_rest_while_their_keys_are_borrowed(program):
    with I3Desktop(program, BOUND, "borrowed.i3") as desktop:
        window = desktop.open(APPLICATIONS["mousepad"]).window
        users_bindings_act(desktop, window, "before the program runs")
        product = desktop.launch()
        product.until_status(taken(*BOUND_ACTIONS))
        users_bindings_act(desktop, window, "without consent")

        ask(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        works_alone_on_i3(desktop, product, window, "with consent")
        assert borrowed(desktop, program) == set(BOUND_ACTIONS)

        ask(desktop, program, "--give-back-shortcuts")
        product.until_status(taken(*BOUND_ACTIONS))
        users_bindings_act(desktop, window, "after they were given back")

        ask(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        product.process.kill()
        product.process.wait()
        users_bindings_act(desktop, window, "after the program was killed")

        product = desktop.launch()
        product.until_status("Active")
        works_alone_on_i3(desktop, product, window, "at the next start")
        desktop.reload()
        works_alone_on_i3(desktop, product, window, "after a reload", POLL)
        desktop.restart_in_place()
        works_alone_on_i3(desktop, product, window, "after a restart in place", POLL)
        desktop.configure("")
        desktop.reload()
        works_on_i3(desktop, product, window, "after the user has freed the keys")
        desktop.configure(BOUND)
        desktop.reload()
        works_alone_on_i3(desktop, product, window, "after the user has bound the keys again", POLL)
        product.terminate()
        users_bindings_act(desktop, window, "after the program has ended")
