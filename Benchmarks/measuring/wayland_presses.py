"""Presses on Wayland: a window of its natural size takes the left and the right half of an empty screen in turns.

The compositor itself moves it back in between, so that each press changes its size: a window only receives changed
sizes.
"""

from contextlib import ExitStack
from itertools import cycle, islice

from .presses import BORROWING, WARM_UPS, Contender, Samples, borrow_keys, turns
from .scheduling import share_real_time
from .wayland import COMPOSITORS, Probe

from harness.rect import Rect
from harness.waiting import until_equal

# Kernel key codes (linux/input-event-codes.h).
KEY_1, KEY_2, KEY_3, KEY_4, KEY_9, KEY_LEFT, KEY_RIGHT = 2, 3, 4, 5, 10, 105, 106


class Run:
    """One compositor with Tessel and the window. `borrows`: it holds our keys, and Tessel borrows them."""

    def __init__(self, name: str, borrows: bool = False):
        self.borrows = borrows
        self.measured = COMPOSITORS[name](keys_are_held=True) if borrows else COMPOSITORS[name]()
        self.desktop = self.measured.desktop
        self.field = [
            Contender(f"{name}: {self.measured.action}", KEY_1, KEY_2, True),
            Contender("Tessel", KEY_LEFT, KEY_RIGHT),
        ]
        if self.measured.script:
            self.field.append(Contender(self.measured.script, KEY_3, KEY_4))
        if self.measured.lends:
            self.field.append(Contender(BORROWING, KEY_LEFT, KEY_RIGHT, borrows=True))
        area = self.measured.work_area
        left = area._replace(width=area.width // 2)
        self.halves = (left, left._replace(x=area.x + left.width))

    def __enter__(self) -> "Run":
        self.desktop.__enter__()
        try:
            if self.borrows:
                self.product = borrow_keys(self.desktop)
            else:
                self.product = self.desktop.launch()
                self.product.until_status("Active", 20.0)
            self.probe = Probe(self.measured)
            self.window = self.measured.window_of(self.probe.process)
            share_real_time(self.desktop.session.processes)
        except BaseException as error:
            self.desktop.__exit__(type(error), error, error.__traceback__)
            raise
        return self

    def __exit__(self, *error) -> None:
        self.desktop.__exit__(*error)

    def block(self, contender: Contender, presses: int) -> list[tuple[float, float]]:
        """Milliseconds of each press of one contender's turn."""
        shortcuts = cycle(zip((contender.left_key, contender.right_key), self.halves))
        return [self.press(*shortcut) for shortcut in islice(shortcuts, WARM_UPS + presses)][WARM_UPS:]

    def press(self, key: int, half: Rect) -> tuple[float, float]:
        """Milliseconds until the window receives its new size, and until it has been painted in its place."""
        self.measured.reset(self.window)
        self.product.until_at_rest()
        configured, painted, size = self.probe.resize(key)
        until_equal(lambda: self.measured.frame(self.window), half, "the frame")
        # It has no decoration, so this was the size of the frame.
        assert size == half.size, f"the window received {size}"
        return configured, painted

    def way_of_a_key(self, presses: int) -> list[float]:
        """Milliseconds of each press of a free key until the window has it."""
        return [self.probe.reach(KEY_9) for _ in range(WARM_UPS + presses)][WARM_UPS:]


def measure(name: str, rounds: int, presses: int) -> tuple[list[Contender], Samples, Samples]:
    """The results until the window is configured, with the time of a free key beside it, and until it is painted."""
    with ExitStack() as runs:
        run = runs.enter_context(Run(name))
        places = {False: run}
        if run.measured.lends:
            places[True] = runs.enter_context(Run(name, borrows=True))
        reached = "a free key, until the window has it"
        configured: Samples = {contender.name: [] for contender in run.field} | {reached: []}
        painted: Samples = {contender.name: [] for contender in run.field}
        for contender in turns(run.field, rounds):
            for samples, taken in zip((configured, painted), zip(*places[contender.borrows].block(contender, presses))):
                samples[contender.name].append(list(taken))
            if contender is run.field[-1]:
                configured[reached].append(run.way_of_a_key(presses))
        return run.field, configured, painted
