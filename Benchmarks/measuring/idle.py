"""The cost of programs while they wait."""

import time
from dataclasses import dataclass
from pathlib import Path

# Ten applications with a rule in Tessel's settings; one of them is used, the others need not be installed.
RULED = ("featherpad", *(f"org.example.Application{number}" for number in range(9)))


@dataclass(frozen=True)
class Memory:
    """In KiB, as the kernel counts."""

    resident: int
    proportional: int
    private_dirty: int

    @staticmethod
    def of(process_id: int) -> "Memory":
        values = {}
        for line in Path(f"/proc/{process_id}/smaps_rollup").read_text().splitlines()[1:]:
            name, value, _ = line.split()
            values[name] = int(value)
        return Memory(values["Rss:"], values["Pss:"], values["Private_Dirty:"])


@dataclass(frozen=True)
class Activity:
    """Since the start of the process."""

    wake_ups: int
    nanoseconds: int

    @staticmethod
    def of(process_id: int) -> "Activity":
        threads = list(Path(f"/proc/{process_id}/task").iterdir())
        wake_ups = 0
        for thread in threads:
            lines = (thread / "status").read_text().splitlines()
            wake_ups += next(int(line.split()[1]) for line in lines if line.startswith("voluntary_ctxt_switches"))
        return Activity(wake_ups, sum(int((thread / "schedstat").read_text().split()[0]) for thread in threads))


@dataclass(frozen=True)
class Cost:
    memory: Memory
    wake_ups_per_second: float
    milliseconds_per_minute: float

    def cells(self) -> list[str]:
        """The values of a row, in the order of `COLUMNS`."""
        kibibytes = (self.memory.private_dirty, self.memory.proportional, self.memory.resident)
        return [
            *(f"{each:,}" for each in kibibytes), f"{self.wake_ups_per_second:.2f}",
            f"{self.milliseconds_per_minute:.2f}",
        ]


COLUMNS = ["KiB", "PSS KiB", "RSS KiB", "wake-ups/s", "CPU ms/min"]


def until_at_rest(process_id: int) -> None:
    """Returns when the work after the use is done: when the process has slept through a whole second."""
    slept_since, wake_ups = time.monotonic(), -1
    while time.monotonic() - slept_since < 1:
        now = Activity.of(process_id).wake_ups
        if now != wake_ups:
            slept_since, wake_ups = time.monotonic(), now
        time.sleep(0.02)


def watch(running: dict[str, int], seconds: float) -> dict[str, Cost]:
    """Maps each program, given with its process ids, to its cost in this time."""
    began = time.monotonic()
    before = {name: Activity.of(process_id) for name, process_id in running.items()}
    time.sleep(seconds)
    after = {name: Activity.of(process_id) for name, process_id in running.items()}
    watched = time.monotonic() - began
    return {
        name: Cost(
            Memory.of(process_id),
            (after[name].wake_ups - before[name].wake_ups) / watched,
            (after[name].nanoseconds - before[name].nanoseconds) / 1e6 / watched * 60,
        )
        for name, process_id in running.items()
    }
