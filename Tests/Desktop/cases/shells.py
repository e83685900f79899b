"""GNOME Shell and Cinnamon on Wayland, which run the same code of the program: the cases that are the same in both."""

import signal

from harness.cinnamon import Cinnamon
from harness.gnome import SHORTCUTS, Gnome
from harness.holders import until_holders
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.waiting import STARTING, throughout, until

from . import case

SHELLS = (Gnome, Cinnamon)

# Where a person might have put a window: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(211, 173, 662, 503)

APPLICATIONS = {
    "mousepad": (["mousepad", "--disable-server"], {"GDK_BACKEND": "wayland"}),
    "featherpad": (["featherpad", "--standalone"], {"QT_QPA_PLATFORM": "wayland"}),
    "xterm": (["xterm", "-fa", "Monospace", "-fs", "10"], {}),
}

# The keys that both hold with their defaults.
HELD = {"leftHalf", "rightHalf", "maximize", "maximizeHeight"}
KEYS = [("Control", "Alt", key) for key in SHORTCUTS.values()]
# The program checks its desktop every two seconds, with leeway.
LOOK = 20.0
# Longer than the program waits in one turn, and shorter than it tries again.
BUSY = 1.2


def in_each_shell(subject: str, values=(None,)):
    """Adds a case for each shell, and for each value. The function takes what starts the shell, and the value if there
    are some."""

    def add(function):
        for shell in SHELLS:
            for value in values:
                name = ".".join([shell.key, subject, *([value] if value else [])])

                def run(program, shell=shell, name=name, value=value):
                    function(lambda **options: shell(program, name, **options), *([value] if value else []))

                case(f"desktop.{name}")(run)
        return function

    return add


def open_application(desktop: Gnome, name: str):
    command, extra = APPLICATIONS[name]
    if name == "xterm":
        extra = desktop.x11_environment()
    return desktop.open(command, name, extra)


def on_monitor(desktop: Gnome, rect: Rect, number: int) -> Rect:
    monitor = desktop.monitors[number]
    return rect._replace(x=rect.x + monitor.x, y=rect.y + monitor.y)


def sizes_of(desktop: Gnome, name: str, window: int):
    """Maps a requested size to the one that the application takes."""
    return desktop.sizes_of_steps(window) if name == "xterm" else lambda asked: asked


def works(desktop: Gnome, window: int, when: str, actions=ACTIONS) -> None:
    """Checks that the program's actions act."""
    area = desktop.work_areas()[0]
    for action in actions:
        before = desktop.place(window, NATURAL)
        desktop.hands.press(action)
        wanted = expected(action, before, area, lambda size: size)
        desktop.holds_frame(window, wanted, f"the frame after {action} {when}")


@in_each_shell("actions", APPLICATIONS)
def every_action_puts_the_window_where_it_belongs(start, name):
    with start() as desktop:
        _, window = open_application(desktop, name)
        product = desktop.launch()
        product.until_status("Active")
        assert desktop.status()["backend"] == desktop.backend, desktop.status()
        sizes = sizes_of(desktop, name, window)
        failures = []
        for number, area in enumerate(desktop.work_areas()):
            for action in ACTIONS:
                before = desktop.place(window, on_monitor(desktop, NATURAL, number))
                wanted = expected(action, before, area, sizes)
                for often in ("once", "twice"):
                    desktop.hands.press(action)
                    try:
                        desktop.holds_frame(window, wanted, f"frame after {action} {often} (from {before})")
                        product.until_no_retry()
                    except AssertionError as failure:
                        failures.append(str(failure))
        assert not failures, "\n".join(failures)


@in_each_shell("maximized")
def a_maximized_window_is_released_first(start):
    with start() as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        for state in ("BOTH", "VERTICAL"):
            for action in ("rightHalf", "almostMaximize", "maximize"):
                start_frame = desktop.place(window, NATURAL)
                desktop.see(f"maximize(one({window}), Meta.MaximizeFlags.{state})")
                until(lambda: desktop.see(f"isMaximized(one({window}))") and desktop.frame(window) != start_frame,
                      "the window to be maximized")
                before = desktop.at_rest(window)
                desktop.hands.press(action)
                wanted = expected(action, before, area, lambda size: size)
                desktop.holds_frame(window, wanted, f"{action} from maximized {state}")
                # A window that is in place already does not move.
                if wanted != before:
                    until(lambda: not desktop.see(f"isMaximized(one({window}))"), "the window to be released")


@in_each_shell("taken")
def keys_that_the_shell_holds_are_reported_and_left_to_it(start):
    with start(keys_free=False) as desktop:
        _, window = open_application(desktop, "mousepad")
        # The shell itself names the holders of the keys, without the tool that prints settings.
        product = desktop.launch(environment={"PATH": "/nonexistent"})
        until(lambda: desktop.taken() == HELD, "the taken keys to be reported", saw=desktop.status)
        assert product.status.startswith("Some shortcuts are taken"), product.status
        until_holders(desktop.session, desktop.program,
                      {action: (desktop.title, desktop.purposes[action]) for action in HELD})
        works(desktop, window, "beside taken keys", ["center", "almostMaximize"])


def hold_left_half(desktop: Gnome, window: int) -> None:
    """The keys of the left half, held for longer than the shell waits before it repeats them, act once."""
    area = desktop.work_areas()[0]
    repeating = desktop.time_to_repeat()
    before = desktop.place(window, NATURAL)
    desktop.hands.hold("Control", "Alt", "Left")
    desktop.holds_frame(window, expected("leftHalf", before, area, lambda size: size), "the left half")
    desktop.place(window, NATURAL)
    throughout(2 * repeating, lambda: desktop.frame(window) == NATURAL, "left alone while the key was held",
               lambda: desktop.frame(window))
    desktop.hands.release("Control", "Alt", "Left")


@in_each_shell("held")
def a_key_that_is_held_counts_once(start):
    with start() as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        hold_left_half(desktop, window)


@in_each_shell("busy")
def a_rule_is_carried_out_to_the_end_in_a_busy_shell(start):
    with start() as desktop:
        desktop.session.rules({"debian-xterm": "leftHalf"})
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        desktop.busy_when_a_window_appears(BUSY)
        _, window = open_application(desktop, "xterm")
        # A terminal counts in characters, so it is moved once more, by what the shell answers.
        wanted = expected("leftHalf", NATURAL, area, desktop.sizes_of_steps(window))
        assert wanted.y > area.y, f"{wanted} needs no correction in {area}"
        until(lambda: desktop.at_rest(window) == wanted, "the terminal to be at its place",
              saw=lambda: (desktop.frame(window), wanted))


@in_each_shell("ends", ("SIGTERM", "SIGKILL"))
def nothing_is_left_in_the_shell_when_the_program_ends(start, name):
    with start() as desktop:
        assert not desktop.has_part()
        for _ in range(2):
            # At the second time the shell may not have noticed the end of the first.
            product = desktop.launch()
            product.until_status("Active")
            until(desktop.has_part, "the program's part in the shell")
            # If the shell is busy when the program starts, the program repeats its request for them.
            until(lambda: all(desktop.is_bound(*key) for key in KEYS), "the keys to be held")
            desktop.session.processes.end(product.process, getattr(signal, name))
        until(lambda: not any(desktop.is_bound(*key) for key in KEYS), "the keys to be free")
        until(lambda: not desktop.has_part(), "the program's part to be gone")


@in_each_shell("shell-restarts")
def the_shell_may_end_and_come_back(start):
    with start() as desktop:
        product = desktop.launch()
        product.until_status("Active")
        desktop.end_shell()
        product.until_status("Waiting for permission", LOOK)
        desktop.start_shell()
        product.until_status("Active", STARTING)
        _, window = open_application(desktop, "mousepad")
        works(desktop, window, "after a restart of the shell", ["leftHalf"])
