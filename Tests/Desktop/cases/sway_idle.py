"""The program's cost on sway while nothing happens."""

from pathlib import Path

from harness.applications import APPLICATIONS
from harness.sway import SwayDesktop
from harness.waiting import throughout

from . import case


def switches(process_id: int) -> int:
    """The number of voluntary context switches of the process."""
    for line in Path(f"/proc/{process_id}/status").read_text().splitlines():
        if line.startswith("voluntary_ctxt_switches"):
            return int(line.split()[1])
    raise AssertionError("the kernel does not count")


@case("desktop.sway.idle")
def it_sleeps_while_nothing_happens(program):
    with SwayDesktop(program, name="sway.idle") as desktop:
        desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        product.until_at_rest()
        before = switches(product.process.pid)
        # Only the periodic checks for the permission remain, every two seconds and up to ten late.
        woken = lambda: switches(product.process.pid) - before
        throughout(12.0, lambda: woken() <= 12, "asleep but for 12 times in 12 s", woken)
