"""Shortcuts on Hyprland, beside the user's bindings and those of another program."""

import json
import signal

from harness import keys_page
from harness.applications import Application
from harness.hot_key_client import APPLICATION, SYMBOLS, HotKeyClient
from harness.hyprland import PATIENCE, HyprlandDesktop
from harness.oracle import ACTIONS
from harness.placements import part
from harness.rect import Rect
from harness.waiting import until, until_equal

from . import case

NATURAL = Rect(211, 93, 732, 403)
FOOT = Application("foot", "foot", ("foot",))

# By symbol, by the key's number, and in a mode that is not in use.
CONFLICTS = """
hl.bind("CTRL + ALT + left", hl.dsp.exec_cmd("touch {folder}/left"), {{ description = "touches left" }})
hl.bind("CTRL + ALT + code:54", hl.dsp.exec_cmd("touch {folder}/c"))
hl.define_submap("resize", function()
    hl.bind("CTRL + ALT + up", hl.dsp.exec_cmd("touch {folder}/up"))
end)
"""


def taken(*actions: str) -> str:
    return "Some shortcuts are taken: " + ", ".join(action for action in ACTIONS if action in actions)


def rival_of(desktop: HyprlandDesktop, protocol: str) -> HotKeyClient:
    return HotKeyClient(desktop.socket, protocol, PATIENCE)


@case("desktop.hyprland.bound-key")
def a_key_that_the_user_binds_to_a_place_works(program):
    with HyprlandDesktop(program, keys_page.block("Hyprland", program), "hyprland.bound-key") as desktop:
        address = desktop.open(FOOT)
        desktop.launch()
        desktop.place(address, NATURAL)
        desktop.keyboard.chord(*keys_page.CHORD)
        desktop.holds_frame(address, part("top-left", desktop.work_area()), "the window in its corner")


@case("desktop.hyprland.keys.taken")
def keys_of_the_user_and_of_other_programs_stay_theirs(program):
    with HyprlandDesktop(program, name="hyprland.keys.taken") as desktop:
        folder = desktop.session.directory / "touched"
        folder.mkdir()
        desktop.configure(CONFLICTS.format(folder=folder))
        address = desktop.open(FOOT)
        desktop.place(address, NATURAL)
        rival = rival_of(desktop, "vicinae")
        right = rival.ask("Right", "Rival Right")
        assert right.events == ["bound"], right
        product = desktop.launch(status=taken("leftHalf", "rightHalf", "center"))

        def holders() -> dict[str, tuple[str, str]]:
            shortcuts = json.loads(desktop.ask_program("--status", "--json"))["shortcuts"]
            return {each["action"]: (each["heldBy"], each["purpose"]) for each in shortcuts if "heldBy" in each}

        until_equal(holders, {
            "leftHalf": ("Hyprland", "touches left"),
            "rightHalf": (APPLICATION, "Rival Right"),
            "center": ("Hyprland", "exec_cmd"),
        }, "the holders", PATIENCE)
        # The program has the other keys, and nobody else gets them.
        late = rival.ask("Down", "Rival Down")
        assert late.events == ["denied"], late
        for action in ("leftHalf", "rightHalf", "center"):
            desktop.keyboard.press(action)
        until(lambda: {file.name for file in folder.iterdir()} == {"left", "c"}, "the user's own bindings", PATIENCE,
              lambda: list(folder.iterdir()))
        until(lambda: rival.listen() or right.presses, "the other program's key", PATIENCE, lambda: right)
        assert right.presses == 1 and desktop.frame(address) == NATURAL, right
        desktop.keyboard.press("maximize")
        desktop.holds_frame(address, desktop.work_area(), "the maximized frame beside the user's keys")
        assert not (folder / "up").exists(), "a binding of another mode acted"

        desktop.configure("")
        product.until_status(taken("rightHalf"), PATIENCE)
        desktop.place(address, NATURAL)
        desktop.keyboard.press("leftHalf")
        area = desktop.work_area()
        desktop.holds_frame(address, area._replace(width=area.width // 2), "the left half by the freed key")

        rival.close()
        desktop.configure("")
        product.until_status("Active", PATIENCE)
        # Both protocols are there, and each knows the keys of the other.
        other = rival_of(desktop, "xx")
        refused = other.ask("Left", "Rival Left")
        assert refused.events == ["denied"], refused
        other.give_back(refused)
        desktop.session.processes.end(product.process, signal.SIGKILL)
        keys = [other.ask(key, f"Rival {key}") for key in SYMBOLS]
        assert all(key.events == ["bound"] for key in keys), keys
        for action in ACTIONS:
            desktop.keyboard.press(action)
        until(lambda: other.listen() or all("released" in key.events for key in keys), "the other program's keys",
              PATIENCE, lambda: keys)
        assert [key.presses for key in keys] == [1] * len(keys), keys
