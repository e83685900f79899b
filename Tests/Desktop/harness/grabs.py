"""The holder of a shortcut: found out by trying to take it, by the core's kind of grab and by that of XI2.

The attempt takes a free key for an instant. It holds the server meanwhile, and the server releases itself and the keys
together, so no other client finds them taken: most clients ask for a key only once.
"""

from Xlib import X, display, error
from Xlib.ext import xinput

from .keyboard import PLACES, SHORTCUTS

MODIFIERS = X.ControlMask | X.Mod1Mask
LOCKS = (0, X.LockMask, X.Mod2Mask, X.LockMask | X.Mod2Mask)


def held_by_others(name: str) -> dict[str, set[int]]:
    """The actions whose shortcut another client holds, each with the combinations of lock keys of its grabs."""
    connection = display.Display(name)
    root = connection.screen().root
    connection.grab_server()
    refusals = {}
    for action, key in SHORTCUTS.items():
        for locks in LOCKS:
            refusal = refusals[action, locks] = error.CatchError(error.BadAccess)
            root.grab_key(PLACES[key], MODIFIERS | locks, True, X.GrabModeAsync, X.GrabModeAsync, onerror=refusal)
    # One round trip for all, so that the server is not held for long.
    connection.sync()
    connection.close()
    held: dict[str, set[int]] = {}
    for (action, locks), refusal in refusals.items():
        if refusal.get_error():
            held.setdefault(action, set()).add(locks)
    return held


def all_held() -> dict[str, set[int]]:
    """The result of `held_by_others` when every shortcut is held under every combination of lock keys."""
    return {action: set(LOCKS) for action in SHORTCUTS}


def take_through_extension(root, key: str) -> bool:
    """Grabs the key with Ctrl and Alt, under every combination of lock keys; gives whether it was granted."""
    refused = root.xinput_grab_keycode(
        xinput.AllMasterDevices, X.CurrentTime, PLACES[key], xinput.GrabModeAsync, xinput.GrabModeAsync, False,
        xinput.KeyPressMask | xinput.KeyReleaseMask, [MODIFIERS | locks for locks in LOCKS])
    return not refused.modifiers


def held_through_extension(name: str) -> set[str]:
    """The actions whose shortcut another client holds by a grab of the X Input extension."""
    connection = display.Display(name)
    connection.xinput_query_version()
    root = connection.screen().root
    connection.grab_server()
    held = {action for action, key in SHORTCUTS.items() if not take_through_extension(root, key)}
    connection.close()
    return held


class GreedyClient:
    """A program that holds the shortcut of an action by both kinds of grabs."""

    def __init__(self, name: str, action: str):
        self.connection = display.Display(name)
        self.connection.xinput_query_version()
        root = self.connection.screen().root
        assert take_through_extension(root, SHORTCUTS[action]), f"{action} is held by others"
        for locks in LOCKS:
            root.grab_key(PLACES[SHORTCUTS[action]], MODIFIERS | locks, False, X.GrabModeAsync, X.GrabModeAsync)
        self.connection.sync()

    def close(self) -> None:
        self.connection.close()
