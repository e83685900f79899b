"""sxhkd, the daemon that runs a command for a key, and a check whether it holds its keys."""

import subprocess

from harness.desktop import Desktop
from harness.skipping import require
from harness.waiting import until
from Xlib import X, error

CONTROL_ALT = X.ControlMask | X.Mod1Mask
ALT = X.Mod1Mask
SUPER = X.Mod4Mask

# The leanest shell, as a user who cares about speed would set it.
ENVIRONMENT = {"SXHKD_SHELL": "/bin/sh"}


def is_taken(desktop: Desktop, key_code: int, modifiers: int = CONTROL_ALT) -> bool:
    """Whether another client holds that hot key."""
    connection, root = desktop.windows.connection, desktop.windows.root
    refusal = error.CatchError(error.BadAccess)
    root.grab_key(key_code, modifiers, False, X.GrabModeAsync, X.GrabModeAsync, onerror=refusal)
    root.ungrab_key(key_code, modifiers)
    connection.sync()
    return refusal.get_error() is not None


def configuration(desktop: Desktop, commands: dict[str, str]) -> str:
    """Writes a configuration: commands by hot key. Returns its path."""
    desktop.session.configure(
        ".config/sxhkd/sxhkdrc", "".join(f"{hot_key}\n    {command}\n\n" for hot_key, command in commands.items())
    )
    return str(desktop.session.home / ".config/sxhkd/sxhkdrc")


def start(
    desktop: Desktop, commands: dict[str, str], last_key_code: int, modifiers: int = CONTROL_ALT
) -> subprocess.Popen:
    """Starts it and waits until it holds the last of its keys."""
    require("sxhkd", "sxhkd")
    command = ["sxhkd", "-c", configuration(desktop, commands)]
    process = desktop.session.start(command, "sxhkd", ENVIRONMENT)
    until(lambda: is_taken(desktop, last_key_code, modifiers), "sxhkd to hold its keys")
    return process
