"""Keys that GNOME Shell itself holds, borrowed with the user's consent: single keys, and only while the program
runs."""

import json
import signal

from harness.gnome import Gnome
from harness.holders import COMMON_PURPOSES, until_holders
from harness.oracle import ACTIONS, expected
from harness.product import Product, run_to_end
from harness.waiting import until, until_equal

from . import case
from .shells import NATURAL, hold_left_half, open_application
from .gnome_extension import LEFT, Stranger

WINDOW_KEYS = "org.gnome.desktop.wm.keybindings"
SHELL_KEYS = "org.gnome.shell.keybindings"
HELD = {"leftHalf", "rightHalf", "maximize", "maximizeHeight", "almostMaximize"}
# The program checks its desktop every two seconds, with leeway.
LOOK = 20.0


class Lending(Gnome):
    """A shell with three workspaces that holds the arrows, and D as Ubuntu's shell does."""

    def _prepare(self, keys_free: bool, extension: str) -> None:
        super()._prepare(keys_free, extension)
        self.change_setting("org.gnome.mutter", "dynamic-workspaces", "false")
        self.change_setting("org.gnome.desktop.wm.preferences", "num-workspaces", "3")
        self.change_setting(WINDOW_KEYS, "show-desktop", "['<Super>d', '<Control><Alt>d']")

    def __init__(self, program, name: str, **options):
        super().__init__(program, name, keys_free=False, **options)

    def workspace(self) -> int:
        return self.see("global.workspace_manager.get_active_workspace_index()")

    def actions(self, mark: str) -> set[str]:
        """The actions whose shortcut has the mark in the program's status."""
        return {shortcut["action"] for shortcut in self.status()["shortcuts"] if shortcut.get(mark)}

    def key_settings(self) -> list[str]:
        """All settings of the shell that bind keys."""
        lines = self.session.run(["gsettings", "list-recursively"]).splitlines()
        return sorted(line for line in lines if "keybindings" in line.split()[0])

    def asks(self, option: str) -> None:
        ended, _, errors, _ = run_to_end(self.session, self.program, option, seconds=20.0)
        assert (ended, errors) == (0, ""), f"{option}: {ended}, {errors}"

    def switches(self, when: str, *keys: tuple[str, ...]) -> None:
        """Checks that the shell's bindings to the right and to the left act."""
        for chord, wanted in zip(keys or (("Control", "Alt", "Right"), ("Control", "Alt", "Left")), (1, 0)):
            self.hands.chord(*chord)
            until_equal(self.workspace, wanted, f"the workspace after {'+'.join(chord)} {when}")

    def is_hidden(self, window: int) -> bool:
        return self.see(f"one({window}).is_hidden()")

    def obstacles(self) -> dict[str, str]:
        return {each["action"]: each["notBorrowable"]
                for each in self.status()["shortcuts"] if "notBorrowable" in each}

    def shows_desktop(self, window: int, when: str, *chord: str) -> None:
        for wanted in (True, False):
            self.hands.chord(*chord)
            until(lambda: self.is_hidden(window) == wanted, f"the desktop shown: {wanted}, by {'+'.join(chord)} {when}")
        self.activate(window)

    def desktop_acts(self, window: int, when: str) -> None:
        self.switches(when)
        self.shows_desktop(window, when, "Control", "Alt", "D")

    def works(self, product: Product, window: int, when: str, actions=ACTIONS) -> None:
        """Checks that the program's actions act, and nothing else."""
        area = self.work_areas()[0]
        for action in actions:
            before = self.place(window, NATURAL)
            self.hands.press(action)
            wanted = expected(action, before, area, lambda size: size)
            self.holds_frame(window, wanted, f"the frame after {action} {when}")
            product.until_no_retry()
        assert self.workspace() == 0, f"the shell has acted {when}"
        assert not self.is_hidden(window), f"the shell has shown the desktop {when}"

    def other_keys_act(self, window: int, when: str) -> None:
        self.switches(when, ("Super", "Page Down"), ("Super", "Page Up"))
        self.shows_desktop(window, when, "Super", "D")


def until_taken(desktop: Lending, product: Product) -> None:
    until(lambda: desktop.taken() == HELD, "the taken keys to be reported", saw=desktop.status)
    assert product.status.startswith("Some shortcuts are taken"), product.status


def until_borrowed(desktop: Lending, product: Product, wanted=frozenset(HELD)) -> None:
    until(lambda: desktop.actions("borrowed") == wanted, f"{sorted(wanted)} to be borrowed", LOOK, desktop.status)
    assert product.status == "Active", product.status


def launch_and_borrow(desktop: Lending) -> tuple[Product, int]:
    """The program with all that the shell can lend it, and a window to act on."""
    _, window = open_application(desktop, "mousepad")
    product = desktop.launch()
    until_taken(desktop, product)
    desktop.asks("--take-shortcuts")
    until_borrowed(desktop, product)
    return product, window


@case("desktop.gnome.borrowed.life")
def held_keys_are_ours_with_consent_and_the_shells_again_afterwards(program):
    with Lending(program, "gnome.borrowed.life") as desktop:
        _, window = open_application(desktop, "mousepad")
        settings = desktop.key_settings()
        product = desktop.launch()
        until_taken(desktop, product)
        until_holders(desktop.session, program, {action: ("GNOME", COMMON_PURPOSES[action]) for action in HELD})
        assert desktop.actions("canBeBorrowed") == HELD and not desktop.status()["borrowsShortcuts"]
        desktop.desktop_acts(window, "without consent")

        desktop.asks("--take-shortcuts")
        until_borrowed(desktop, product)
        assert desktop.status()["borrowsShortcuts"] and not desktop.actions("canBeBorrowed")
        desktop.works(product, window, "with consent")
        desktop.other_keys_act(window, "with consent")
        desktop.works(product, window, "after the bindings' other keys")
        desktop.see("Main.overview.show()")
        until(lambda: desktop.see("Main.actionMode === Shell.ActionMode.OVERVIEW"), "the overview")
        desktop.switches("in the overview")
        desktop.see("Main.overview.hide()")
        until(lambda: not desktop.see("Main.overview.visible"), "the overview to be gone")

        desktop.asks("--give-back-shortcuts")
        until_taken(desktop, product)
        desktop.desktop_acts(window, "after they were given back")

        desktop.asks("--take-shortcuts")
        until_borrowed(desktop, product)
        desktop.session.processes.end(product.process, signal.SIGKILL)
        until(lambda: not desktop.has_item(), "the shell to know of the program's end")
        desktop.desktop_acts(window, "after the program was killed")

        product = desktop.launch()
        until_borrowed(desktop, product)
        desktop.works(product, window, "at the next start")
        product.terminate()
        until(lambda: not desktop.has_item(), "the shell to know of the program's end")
        desktop.desktop_acts(window, "after the program has ended")
        desktop.other_keys_act(window, "after the program has ended")
        assert desktop.key_settings() == settings


@case("desktop.gnome.borrowed.settings")
def borrowed_keys_follow_the_shells_settings(program):
    with Lending(program, "gnome.borrowed.settings") as desktop:
        product, window = launch_and_borrow(desktop)

        # Removed: the key is free, and the program grabs it as a free key.
        desktop.change_setting(WINDOW_KEYS, "switch-to-workspace-left", "['<Super>Page_Up']")
        until_borrowed(desktop, product, HELD - {"leftHalf"})
        desktop.works(product, window, "after a binding was removed")
        # Added: the same with C, and back again with the arrow.
        desktop.change_setting(WINDOW_KEYS, "switch-to-workspace-left", "['<Super>Page_Up', '<Control><Alt>Left']")
        desktop.change_setting(WINDOW_KEYS, "switch-to-workspace-last", "['<Control><Alt>c']")
        until_borrowed(desktop, product, HELD | {"center"})
        desktop.works(product, window, "after bindings were added")
        # Changed: it has another function in the shell, and stays ours.
        desktop.change_setting(WINDOW_KEYS, "show-desktop", "['<Super>d']")
        desktop.change_setting(WINDOW_KEYS, "toggle-fullscreen", "['<Control><Alt>d']")
        until_borrowed(desktop, product, HELD | {"center"})
        desktop.works(product, window, "after a binding was changed")
        # A binding that cannot be borrowed has its key, and the program names the holder.
        desktop.change_setting(WINDOW_KEYS, "switch-to-workspace-last", "[]")
        desktop.change_setting(SHELL_KEYS, "toggle-message-tray", "['<Control><Alt>c']")
        until(lambda: desktop.taken() == {"center"}, "the loss of C to be reported", LOOK, desktop.status)
        assert not desktop.actions("canBeBorrowed"), desktop.status()
        assert desktop.obstacles() == {"center": "reserved"}, desktop.status()
        desktop.hands.press("center")
        until(lambda: desktop.see("Main.panel.statusArea.dateMenu.menu.isOpen"), "the shell's own menu")
        desktop.hands.press("center")
        until(lambda: not desktop.see("Main.panel.statusArea.dateMenu.menu.isOpen"), "the shell's own menu to be gone")
        desktop.activate(window)
        desktop.works(product, window, "beside a key that is not lent", [each for each in ACTIONS if each != "center"])

        product.terminate()
        until(lambda: not desktop.has_item(), "the shell to know of the program's end")
        desktop.switches("after the program has ended")
        desktop.shows_desktop(window, "after the program has ended", "Super", "D")
        for wanted in (True, False):
            desktop.hands.press("almostMaximize")
            until(lambda: desktop.see(f"one({window}).is_fullscreen()") == wanted, f"the window to be fullscreen: {wanted}")


@case("desktop.gnome.borrowed.held")
def a_borrowed_key_that_is_held_counts_once(program):
    with Lending(program, "gnome.borrowed.held") as desktop:
        _, window = launch_and_borrow(desktop)
        hold_left_half(desktop, window)


@case("desktop.gnome.borrowed.switched")
def an_extension_that_is_switched_off_gives_back_and_borrows_anew(program):
    with Lending(program, "gnome.borrowed.switched") as desktop:
        product, window = launch_and_borrow(desktop)
        desktop.works(product, window, "before the extension is switched off")
        desktop.switch_extension(False)
        until(lambda: not desktop.has_item(), "the extension to be off")
        desktop.desktop_acts(window, "while the extension is off")
        product.until_status("Waiting for permission", LOOK)
        desktop.switch_extension(True)
        product.until_status("Active", LOOK)
        until_borrowed(desktop, product)
        desktop.works(product, window, "after the extension was switched on again")


@case("desktop.gnome.borrowed.strangers")
def only_the_program_borrows(program):
    with Lending(program, "gnome.borrowed.strangers") as desktop:
        _, window = open_application(desktop, "mousepad")
        stranger = Stranger(desktop)
        borrow = ("Borrow", "(us)", 1, LEFT)
        assert (stranger.ask(*borrow), stranger.ask("LoanObstacle", "(s)", LEFT)) == ("Denied", "Denied")
        # With the name of the program, which is not there, it has what the program has: for as long, and no other key.
        assert stranger.take_name() == 1
        assert stranger.ask(*borrow) == "Denied", "before Hello"
        stranger.ask("Hello")
        for combination in ("<Control><Alt>0x26", "<Super>0x71", "<Super>Page_Up", "<Alt>Tab", ""):
            assert stranger.ask("Borrow", "(us)", 9, combination) == "Denied", combination
        (holders,) = stranger.ask("Holders", "(a(uu))", [(0x71, 12)])
        assert "<Super>Page_Up" in json.loads(holders)[0]["keys"], holders
        assert stranger.ask(*borrow) == (True, True)
        stranger.give_name_back()
        assert stranger.ask(*borrow) == "Denied", "after the name was given back"
        desktop.desktop_acts(window, "after the stranger has gone")

        product = desktop.launch()
        until_taken(desktop, product)
        for call in (borrow, ("Ungrab", "(u)", 1), ("LoanObstacle", "(s)", LEFT)):
            assert stranger.ask(*call) == "Denied", f"{call} beside the program"
        desktop.desktop_acts(window, "without consent")
        desktop.asks("--take-shortcuts")
        until_borrowed(desktop, product)
        for number in range(1, 20):
            assert stranger.ask("Ungrab", "(u)", number) == "Denied"
        desktop.works(product, window, "beside a stranger")
        stranger.bus.close()


@case("desktop.gnome.borrowed.unfit")
def a_shell_that_cannot_lend_is_served_all_the_same(program):
    with Lending(program, "gnome.borrowed.unfit", extension="off") as desktop:
        desktop.see("delete Main.wm.constructor.prototype._showWorkspaceSwitcher")
        desktop.switch_extension(True)
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        until_taken(desktop, product)
        assert not desktop.actions("canBeBorrowed"), desktop.status()
        assert desktop.obstacles() == {action: "unknownShell" for action in HELD}, desktop.status()
        ended, _, errors, _ = run_to_end(desktop.session, program, "--take-shortcuts", seconds=20.0)
        assert ended != 0 and "none of the taken shortcuts can be borrowed" in errors, (ended, errors)
        desktop.works(product, window, "without loans", ["center"])
        desktop.desktop_acts(window, "that lends nothing")
