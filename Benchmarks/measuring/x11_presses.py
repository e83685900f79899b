"""Presses on X11: a text editor's window alternates between the left and the right half of an empty screen."""

import subprocess
from contextlib import ExitStack

from . import PROGRAM, hot_key_daemon, probe
from .bindings import LEFT_KEY, RIGHT_KEY, Measured
from .presses import BORROWING, WARM_UPS, Contender, Samples, borrow_keys, turns

from cases.borrowed import until_ours
from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.keyboard import PLACES
from harness.rect import Rect
from harness.skipping import require
from harness.waiting import STARTING
from harness.windows import ADD, REMOVE

LEFT, RIGHT = Rect(0, 0, 960, 1080), Rect(960, 0, 960, 1080)
# Keys of the number row as evdev numbers them.
NUMBER_ROW = {"1": 10, "2": 11, "3": 12, "4": 13, "5": 14, "6": 15}


def contenders(measured: Measured) -> list[Contender]:
    return [
        Contender(f"{measured.manager.name}: {measured.action}", NUMBER_ROW[LEFT_KEY], NUMBER_ROW[RIGHT_KEY], True),
        Contender("Tessel", PLACES["Left"], PLACES["Right"]),
        Contender("sxhkd + wmctrl", NUMBER_ROW["3"], NUMBER_ROW["4"]),
        Contender("sxhkd + xdotool", NUMBER_ROW["5"], NUMBER_ROW["6"]),
        *([Contender(BORROWING, PLACES["Left"], PLACES["Right"], borrows=True)] if measured.manager.holds else []),
    ]


def start_scripts(desktop: Desktop, window: int) -> None:
    """The scripts contain the decoration's size, so they need not query it at every press."""
    require("wmctrl", "wmctrl")
    require("xdotool", "xdotool")
    left, right, top, bottom = desktop.windows.extents(window, "_NET_FRAME_EXTENTS")
    size = (LEFT.width - left - right, LEFT.height - top - bottom)
    wmctrl = "wmctrl -r :ACTIVE: -e 1,{0},{1},{2},{3}"
    xdotool = "xdotool getactivewindow windowsize {2} {3} windowmove {0} {1}"
    commands = {
        f"ctrl + alt + {key}": line.format(frame.x, frame.y, *size)
        for key, line, frame in (
            ("3", wmctrl, LEFT), ("4", wmctrl, RIGHT), ("5", xdotool, LEFT), ("6", xdotool, RIGHT)
        )
    }
    hot_key_daemon.start(desktop, commands, NUMBER_ROW["6"])


def release_tile(desktop: Desktop, window: int) -> None:
    both = ("MAXIMIZED_VERT", "MAXIMIZED_HORZ")
    desktop.windows.change_state(window, ADD, *both)
    desktop.windows.change_state(window, REMOVE, *both)


def block(desktop: Desktop, window: int, contender: Contender, presses: int) -> list[float]:
    """Milliseconds of each press of one contender's turn."""
    modifiers = f"{PLACES['Control']},{PLACES['Alt']}"
    shortcuts = [
        ",".join(map(str, (key_code, *frame)))
        for key_code, frame in ((contender.left_key, LEFT), (contender.right_key, RIGHT))
    ]
    words = [probe("PressLatency"), str(window), modifiers, *shortcuts, str(WARM_UPS), str(presses)]
    done = subprocess.run(words, env=desktop.session.environment, capture_output=True, text=True, check=False)
    assert done.returncode == 0, f"{contender.name}: {done.stderr.strip()}"
    return [float(line) / 1000 for line in done.stdout.split()]


def measure(measured: Measured, rounds: int, presses: int) -> tuple[list[Contender], Samples]:
    field = contenders(measured)
    samples: Samples = {contender.name: [] for contender in field}
    with ExitStack() as desktops:
        desktop = desktops.enter_context(Desktop(PROGRAM, name="press-latency"))
        desktop.start_window_manager(measured.manager.name)
        window = desktop.open(APPLICATIONS["mousepad"]).window
        start_scripts(desktop, window)
        desktop.launch().until_status("Active")
        places = {False: (desktop, window)}
        if any(contender.borrows for contender in field):
            places[True] = lending_desktop(desktops.enter_context(Desktop(PROGRAM, name="lending")), measured)
        for contender in turns(field, rounds):
            desktop, window = places[contender.borrows]
            if measured.tiles_stick:
                release_tile(desktop, window)
            samples[contender.name].append(block(desktop, window, contender, presses))
    return field, samples


def lending_desktop(desktop: Desktop, measured: Measured) -> tuple[Desktop, int]:
    """A second desktop with everything that the first one has, whose window manager holds our keys by default."""
    desktop.start_window_manager(measured.manager.name, keys_free=False)
    window = desktop.open(APPLICATIONS["mousepad"]).window
    start_scripts(desktop, window)
    until_ours(desktop, borrow_keys(desktop), STARTING)
    return desktop, window
