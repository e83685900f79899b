"""A day of use in a short time: checks the program's resources afterwards, and that no setting is lost.

There are two parts. In the first, one process handles all that a user does in a day, all mixed. Its memory and
descriptors are sampled on the way and must stop growing. In the second, the program is killed while it writes rules;
every rule whose writing was confirmed must be in the file, which must be complete.
"""

import json
import os
import plistlib
import random
import signal
import statistics
import subprocess
import time
from dataclasses import dataclass, fields
from pathlib import Path
from typing import Callable

from .applications import own_window
from .desktop import Desktop, RunningApplication
from .keyboard import SHORTCUTS
from .oracle import expected
from .popover import Popover
from .product import Product, run_to_end
from .settling import settles_on
from .waiting import PATIENCE, until

# The limit for the growth of a process's memory after its first half. The allocator's own variation is smaller.
MEMORY_MARGIN = 512  # KiB
SAMPLES = 40


@dataclass(frozen=True)
class Amounts:
    """The number of each operation."""

    presses: int
    openings: int
    restarts: int
    kills: int


WHOLE = Amounts(presses=100_000, openings=1_000, restarts=200, kills=500)


@dataclass(frozen=True)
class Holdings:
    """The memory and descriptors of a process."""

    private: int
    descriptors: int
    threads: int

    @staticmethod
    def of(process_id: int) -> "Holdings":
        rollup = Path(f"/proc/{process_id}/smaps_rollup").read_text().splitlines()[1:]
        kibibytes = {line.split()[0]: int(line.split()[1]) for line in rollup}
        return Holdings(
            # Clean pages belong to files; whether they are private depends on other programs that use the same
            # libraries.
            kibibytes["Private_Dirty:"] + kibibytes["SwapPss:"],
            len(os.listdir(f"/proc/{process_id}/fd")),
            len(os.listdir(f"/proc/{process_id}/task")),
        )


@dataclass(frozen=True)
class Sample:
    done: Amounts
    rules: int
    holdings: Holdings

    def cells(self) -> list[str]:
        numbers = [getattr(self.done, field.name) for field in fields(Amounts)[:3]]
        numbers += [self.rules, self.holdings.private, self.holdings.descriptors, self.holdings.threads]
        return [f"{number:,}" for number in numbers]


COLUMNS = ["presses", "openings", "restarts", "rules", "private dirty KiB", "descriptors", "threads"]


def share(total: int, number: int, rounds: int) -> int:
    """The share of `total` in one round, spread evenly."""
    return total * (number + 1) // rounds - total * number // rounds


def set_rule(desktop: Desktop, identifier: str, action: str) -> None:
    """Over the command line. It waits two seconds for an answer; a busy machine may exceed that."""
    answer = lambda: run_to_end(desktop.session, desktop.program, "--rule", identifier, action, seconds=PATIENCE)
    until(lambda: answer()[0] == 0, f"the rule of {identifier} to be set", saw=answer)


class Mixture:
    """One process that lives through everything."""

    def __init__(self, desktop: Desktop, product: Product, editor: RunningApplication, reported: Callable[[Sample], None]):
        self.desktop, self.product, self.editor, self.reported = desktop, product, editor, reported
        self.popover = Popover(desktop, product)
        self.samples: list[Sample] = []

    def live(self, amounts: Amounts) -> None:
        rounds = max(amounts.openings, SAMPLES)
        done = dict.fromkeys(("presses", "openings", "restarts"), 0)
        between = max(1, rounds // SAMPLES)
        for number in range(rounds):
            parts = {name: share(getattr(amounts, name), number, rounds) for name in done}
            self._press(done["presses"], parts["presses"])
            for _ in range(parts["openings"]):
                self._open()
            self._set_rule(number)
            for _ in range(parts["restarts"]):
                self._restart()
            for name, count in parts.items():
                done[name] += count
            if (number + 1) % between == 0:
                self._take_sample(Amounts(**done, kills=0), number + 1)

    def _press(self, first: int, count: int) -> None:
        """Presses the six shortcuts in turn, each before the earlier ones are handled; checks the last effect."""
        names = list(SHORTCUTS)
        for number in range(first, first + count):
            action = names[number % len(names)]
            if number + 1 == first + count:
                self._press_and_look(action)
            elif (number + 1) % len(names) == 0 or number + 2 == first + count:
                self.desktop.press(self.product, action)
            else:
                self.desktop.keyboard.press(action)

    def _press_and_look(self, action: str) -> None:
        desktop, window = self.desktop, self.editor.window
        before = desktop.windows.frame(window)
        desktop.press(self.product, action)
        settles = settles_on(desktop.windows, window, self.editor.application, desktop.manager)
        wanted = expected(action, before, desktop.visible_frame(), settles)
        desktop.holds_frame(window, wanted, f"frame by {action}", PATIENCE)

    def _open(self) -> None:
        self.popover.ask_to_open()
        until(self.popover.has_keyboard, "the popover to have the keyboard")
        self.popover.close()
        until(lambda: self.desktop.windows.has_input_focus(self.editor.window), "the editor to have the keyboard")

    def _restart(self) -> None:
        self.desktop.replace_window_manager("openbox")
        self.desktop.adopt(self.editor)
        # If the program checked just when there was no window manager, its keys stay free until its next check.
        self.product.until_at_rest()
        self.product.until_status("Active")

    def _set_rule(self, number: int) -> None:
        action = ("maximize", "center", "none")[number % 3]
        set_rule(self.desktop, f"org.example.Application{number % 20}", action)

    def _take_sample(self, done: Amounts, rules: int) -> None:
        self.product.until_at_rest()
        sample = Sample(done, rules, Holdings.of(self.product.process.pid))
        self.samples.append(sample)
        self.reported(sample)

    def check(self) -> None:
        """Fails if the resources of the process kept growing."""
        half = self.samples[len(self.samples) // 2 : len(self.samples) * 3 // 4]
        last = self.samples[len(self.samples) * 3 // 4 :]
        middle = [statistics.median(sample.holdings.private for sample in part) for part in (half, last)]
        assert middle[1] <= middle[0] + MEMORY_MARGIN, f"memory grows: from {middle[0]} to {middle[1]} KiB"
        for name in ("descriptors", "threads"):
            most = [max(getattr(sample.holdings, name) for sample in part) for part in (half, last)]
            assert most[1] <= most[0], f"{name} grow: from {most[0]} to {most[1]}"
        assert self.product.errors() == "", self.product.errors()


class Kills:
    """The program killed while rules are written, again and again."""

    IDENTIFIERS = 40
    AT_ONCE = 6
    ACTIONS = ("maximize", "center")

    def __init__(self, desktop: Desktop, seed: int):
        self.desktop = desktop
        self.random = random.Random(seed)
        self.settings = desktop.session.home / ".config/tessel/preferences.plist"
        self.rules = self._stored()
        self.interrupted = self.written = 0

    def _stored(self) -> dict[str, str]:
        return plistlib.loads(self.settings.read_bytes()).get("rules", {}) if self.settings.exists() else {}

    def _ask(self, identifier: str, action: str) -> subprocess.Popen:
        return subprocess.Popen(
            [str(self.desktop.program), "--rule", identifier, action], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=self.desktop.session.environment,
        )

    def kill_one(self, number: int) -> None:
        product = self.desktop.launch()
        chosen = self.random.sample(range(self.IDENTIFIERS), self.AT_ONCE)
        wanted = {f"org.example.Application{one}": self.ACTIONS[number % 2] for one in chosen}
        asking = {identifier: self._ask(identifier, action) for identifier, action in wanted.items()}
        until(lambda: any(process.poll() == 0 for process in asking.values()), "a rule to be written")
        # The kill comes at a random moment of the writing: this delay is the experiment and replaces no condition.
        time.sleep(self.random.uniform(0.0, 0.02))
        os.kill(product.process.pid, signal.SIGKILL)
        product.ended()
        self.desktop.products.remove(product)
        product.close()
        answered = {identifier for identifier, process in asking.items() if process.wait(PATIENCE) == 0}
        self.interrupted += len(answered) < len(asking)
        self.written += len(answered)
        stored = self._stored()
        for identifier in {*self.rules, *stored, *wanted}:
            allowed = {wanted.get(identifier, self.rules.get(identifier))}
            if identifier not in answered:
                allowed.add(self.rules.get(identifier))
            found = stored.get(identifier)
            assert found in allowed, f"kill {number}: the rule of {identifier} is {found}, not one of {allowed}"
        self.rules = stored

    def check(self) -> None:
        """Fails if a process that starts after all the kills reads other rules, or finds other files."""
        product = self.desktop.launch()
        set_rule(self.desktop, "org.example.Last", "center")
        reported = json.loads(run_to_end(self.desktop.session, self.desktop.program, "--status", "--json")[1])["rules"]
        assert reported == {**self.rules, "org.example.Last": "center"}, f"rules {reported}, wanted {self.rules}"
        beside = os.listdir(self.settings.parent)
        assert beside == [self.settings.name], f"files beside the settings: {beside}"
        product.terminate()


def live_a_day(program: Path, amounts: Amounts, reported: Callable[[Sample], None], seed: int) -> Kills:
    """Runs both parts; `reported` receives each sample of the first part. Fails if a resource grows, or a rule is lost."""
    with Desktop(program, name="long-day") as desktop:
        desktop.start_window_manager("openbox")
        # It draws next to nothing: an editor would take most of the time for itself.
        editor = desktop.open(own_window())
        product = desktop.launch()
        product.until_status("Active")
        mixture = Mixture(desktop, product, editor, reported)
        mixture.live(amounts)
        mixture.check()
        product.terminate()
        kills = Kills(desktop, seed)
        for number in range(amounts.kills):
            kills.kill_one(number)
        kills.check()
        return kills
