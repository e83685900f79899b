"""What the program costs on sway while nothing happens."""

from pathlib import Path

from harness.applications import APPLICATIONS
from harness.sway import SwayDesktop
from harness.waiting import throughout

from . import case


def switches(process_id: int) -> int:
    """How often the process has gone to sleep by itself."""
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
        # The looks after the permission, every two seconds and up to ten late, are what is left.
        woken = lambda: switches(product.process.pid) - before
        throughout(12.0, lambda: woken() <= 12, "asleep but for 12 times in 12 s", woken)
