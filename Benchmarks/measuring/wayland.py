"""The measured Wayland desktops: our keys free, their own bindings for both halves on other keys."""

import subprocess
from pathlib import Path
from typing import Any

from . import PROGRAM, probe
from .bindings import LEFT_KEY, RIGHT_KEY

from harness.applications import Application
from harness.compositor import FIRST, ApplicationWindow
from harness.gnome import MONITORS, TOP_BAR, Gnome
from harness.kwin import ACCEL, SCREENS, KWinDesktop
from harness.rect import Rect
from harness.sway import SwayDesktop
from harness.waiting import until

# The keys of a script's bindings, on desktops that have one.
SCRIPT_LEFT_KEY, SCRIPT_RIGHT_KEY = "3", "4"
NAME = "org.example.Probe"
NATURAL = Rect(300, 200, 500, 400)
# In KWin's script language.
PUT_BACK = (
    'find("{0}").tile = null; find("{0}").setMaximize(false, false);'
    ' find("{0}").frameGeometry = {{x: {1.x}, y: {1.y}, width: {1.width}, height: {1.height}}};'
)


class KWin:
    action = "Window Quick Tile"
    keySender = "fake-input"
    script = ""
    lends = False
    # Without panels.
    work_area = SCREENS[0]

    def __init__(self) -> None:
        self.desktop = KWinDesktop(PROGRAM, has_keyboard=False)
        control_and_alt = 0x0C000000
        for side, key in (("Left", LEFT_KEY), ("Right", RIGHT_KEY)):
            # Sets another action's shortcut as the system's settings do.
            action = ["kwin", f"Window Quick Tile {side}", "KWin", f"Quick Tile Window to the {side}"]
            keys = [([control_and_alt + ord(key), 0, 0, 0],)]
            self.desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", action, keys)

    def window_of(self, process: subprocess.Popen) -> str:
        window = self.desktop.wait_for(process).window
        self.desktop.eyes.activate(window)
        return window

    def frame(self, window: str) -> Rect:
        return self.desktop.eyes.frame(window)

    def reset(self, window: str) -> None:
        def is_back() -> bool:
            if self.frame(window) == NATURAL:
                return True
            # Repeated while the window still handles an earlier size.
            self.desktop.eyes.windows(PUT_BACK.format(window, NATURAL))
            return False

        until(is_back, "the window to be back", saw=lambda: self.frame(window))


class GnomeShell:
    action = "toggle-tiled-left, toggle-tiled-right"
    keySender = "remote-desktop"
    script = ""
    lends = False
    work_area = MONITORS[0]._replace(y=TOP_BAR, height=MONITORS[0].height - TOP_BAR)

    def __init__(self) -> None:
        self.desktop = Gnome(PROGRAM, name="measured")
        for side, key in (("left", LEFT_KEY), ("right", RIGHT_KEY)):
            binding = f"['<Control><Alt>{key}']"
            self.desktop.change_setting("org.gnome.mutter.keybindings", f"toggle-tiled-{side}", binding)
            until(lambda pressed=key: self.desktop.is_bound("Control", "Alt", pressed), "the shell to hold its key")

    def window_of(self, process: subprocess.Popen) -> int:
        (window,) = until(lambda: self.desktop.windows_of(process.pid), "a window", 20.0)
        self.desktop.activate(window)
        return window

    def frame(self, window: int) -> Rect:
        return self.desktop.frame(window)

    def reset(self, window: int) -> None:
        self.desktop.place(window, NATURAL)


class Sway:
    action = "resize set, move position"
    keySender = "virtual-keyboard"
    script = "exec swaymsg"
    lends = True

    def __init__(self, keys_are_held: bool = False) -> None:
        bindings = "bindsym Ctrl+Mod1+Left nop\nbindsym Ctrl+Mod1+Right nop\n" if keys_are_held else ""
        for keys, x in (((LEFT_KEY, SCRIPT_LEFT_KEY), 0), ((RIGHT_KEY, SCRIPT_RIGHT_KEY), FIRST.width // 2)):
            place = f"floating enable, resize set width 50 ppt height 100 ppt, move position {x} px 0 px"
            for key, command in zip(keys, (place, f"{self.script} '{place}'")):
                bindings += f"bindsym Ctrl+Mod1+{key} {command}\n"
        self.desktop = SwayDesktop(PROGRAM, configuration=bindings, name="measured")
        self.work_area = self.desktop.work_area()

    def window_of(self, process: subprocess.Popen) -> int:
        window = self.desktop.wait_for(ApplicationWindow(Application("measured", "", ()), process))
        until(lambda: self.desktop.window(window).focused, "the window to have the focus")
        return window

    def frame(self, window: int) -> Rect:
        return self.desktop.frame(window)

    def reset(self, window: int) -> None:
        self.desktop.place(window, NATURAL)


COMPOSITORS = {"kwin_wayland": KWin, "gnome-shell": GnomeShell, "sway": Sway}


class Probe:
    """A window that presses keys and records when it receives its size; see Probes/Wayland/PressLatency.cpp."""

    def __init__(self, measured: Any):
        session = measured.desktop.session
        self.log: Path = session.logs / "probe.log"
        self.process = session.start(
            [probe("WaylandPressLatency"), measured.keySender, NAME], "probe",
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1,
        )

    def resize(self, key: int) -> tuple[float, float, tuple[int, int]]:
        """Milliseconds from the press of a shortcut until the window receives its size and until it is painted; the
        size."""
        configured, painted, width, height = self._ask(f"resize {key}")
        return configured / 1000, painted / 1000, (round(width), round(height))

    def reach(self, key: int) -> float:
        """Milliseconds from the press of a free key until the window has it."""
        return self._ask(f"reach {key}")[0] / 1000

    def press(self, key: int) -> None:
        """Presses a shortcut, with any effect."""
        self._ask(f"press {key}")

    def _ask(self, line: str) -> list[float]:
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline()
        assert answer, f"{line}: {self.log.read_text().strip()}"
        return list(map(float, answer.split()))
