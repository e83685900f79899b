"""Who takes part in a measurement of presses, in which order, and how the results are printed."""

from collections.abc import Iterator
from dataclasses import dataclass

from .figures import median, nearest_rank, ratio
from .report import table

# Before the presses that count.
WARM_UPS = 6

# By contender, a list of milliseconds for each round.
Samples = dict[str, list[list[float]]]


@dataclass(frozen=True)
class Contender:
    name: str
    left_key: int
    right_key: int
    is_native: bool = False


def turns(field: list[Contender], rounds: int) -> Iterator[Contender]:
    """All of them in turns, forth and back."""
    for number in range(rounds):
        yield from field if number % 2 == 0 else reversed(field)


def print_results(field: list[Contender], samples: Samples) -> None:
    native = next(contender.name for contender in field if contender.is_native)
    everything = {name: sum(rounds, []) for name, rounds in samples.items()}
    rows = []
    for name, taken in everything.items():
        by_round = [median(own) / median(other) for own, other in zip(samples[name], samples[native])]
        rows.append([
            name,
            ratio(median(taken), median(everything[native])),
            f"{min(by_round):.2f} to {max(by_round):.2f}",
            ratio(nearest_rank(taken, 95), nearest_rank(everything[native], 95)),
            f"{median(taken):.2f}",
            f"{nearest_rank(taken, 95):.2f}",
            str(len(taken)),
        ])
    table(["", "ratio of medians", "by round", "ratio of p95", "median ms", "p95 ms", "presses"], rows)
