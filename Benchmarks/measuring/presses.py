"""The contenders in a measurement of presses, their order, and the printed results."""

from collections.abc import Iterator
from dataclasses import dataclass

from . import PROGRAM
from .figures import median, nearest_rank, ratio
from .report import table

from harness.product import Product, run_to_end
from harness.waiting import STARTING, until

# Before the measured presses.
WARM_UPS = 6

# By contender, a list of milliseconds for each round.
Samples = dict[str, list[list[float]]]


@dataclass(frozen=True)
class Contender:
    name: str
    left_key: int
    right_key: int
    is_native: bool = False
    # It takes its turns on a desktop of its own, which holds our keys and lends them.
    borrows: bool = False


BORROWING = "Tessel with borrowed keys"


def borrow_keys(desktop) -> Product:
    """Starts the program on a desktop that holds its keys, and lets it borrow them."""
    product = desktop.launch()
    until(lambda: product.status and product.status.startswith("Some shortcuts are taken"), "held keys", STARTING)
    ended, _, errors, _ = run_to_end(
        desktop.session, PROGRAM, "--take-shortcuts", seconds=STARTING, prefix=getattr(desktop.session, "prefix", ()))
    assert ended == 0, errors
    product.until_status("Active", STARTING)
    return product


def turns(field: list[Contender], rounds: int) -> Iterator[Contender]:
    """All of them in turns, forwards and backwards."""
    for number in range(rounds):
        yield from field if number % 2 == 0 else reversed(field)


def print_results(field: list[Contender], samples: Samples) -> None:
    print_ratios(next(contender.name for contender in field if contender.is_native),
                 {name: rounds for name, rounds in samples.items() if name != BORROWING})
    if BORROWING in samples:
        print("\nBeside itself with free keys, in the same run:\n")
        print_ratios("Tessel", {name: samples[name] for name in ("Tessel", BORROWING)})


def print_ratios(native: str, samples: Samples) -> None:
    """A row for each, with ratios to the first one."""
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
