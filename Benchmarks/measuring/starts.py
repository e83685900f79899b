"""From the start of a process to the last of six hot keys held, on X11."""

import subprocess

from . import hot_key_daemon, probe

from harness.desktop import Desktop
from harness.keyboard import PLACES
from Xlib import X

WARM_UPS = 2
# The keys in the order in which Tessel grabs them, so that the last one is the last for both.
KEYS = ("Left", "Right", "c", "Up", "d", "Down")
# Both grab their keys with every combination of locks, and this one last.
EVERYTHING = hot_key_daemon.CONTROL_ALT | X.LockMask | X.Mod2Mask


def start_to_armed(desktop: Desktop, command: list[str]) -> float:
    """In milliseconds."""
    words = [probe("StartToArmed"), str(PLACES["Down"]), str(EVERYTHING), *command]
    environment = {**desktop.session.environment, **hot_key_daemon.ENVIRONMENT}
    done = subprocess.run(words, env=environment, capture_output=True, text=True, check=False)
    assert done.returncode == 0, f"{command[0]}: {done.stderr.strip()}"
    return float(done.stdout) / 1000
