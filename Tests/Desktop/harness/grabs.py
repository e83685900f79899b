"""The holder of a shortcut, found by an attempt to grab it."""

from Xlib import X, display, error

from .keyboard import PLACES, SHORTCUTS

MODIFIERS = X.ControlMask | X.Mod1Mask
LOCKS = (0, X.LockMask, X.Mod2Mask, X.LockMask | X.Mod2Mask)


def held_by_others(name: str) -> dict[str, set[int]]:
    """The actions whose shortcut another client holds, each with the combinations of lock keys of its grabs."""
    connection = display.Display(name)
    root = connection.screen().root
    held: dict[str, set[int]] = {}
    for action, key in SHORTCUTS.items():
        for locks in LOCKS:
            refusal = error.CatchError(error.BadAccess)
            root.grab_key(PLACES[key], MODIFIERS | locks, True, X.GrabModeAsync, X.GrabModeAsync, onerror=refusal)
            connection.sync()
            if refusal.get_error():
                held.setdefault(action, set()).add(locks)
    connection.close()
    return held


def all_held() -> dict[str, set[int]]:
    """The result of `held_by_others` when every shortcut is held under every combination of lock keys."""
    return {action: set(LOCKS) for action in SHORTCUTS}
