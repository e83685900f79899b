"""What the program costs on sway while nothing happens."""

import time
from pathlib import Path

from harness.applications import APPLICATIONS
from harness.sway import SwayDesktop

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
        time.sleep(12.0)
        woken = switches(product.process.pid) - before
        assert woken <= 12, f"woke up {woken} times in 12 s"
