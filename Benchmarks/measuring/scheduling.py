"""Who goes first on a busy machine."""

import contextlib
import os
from pathlib import Path

from harness.processes import Processes


def share_real_time(processes: Processes) -> None:
    """Where this process goes before others, all threads of what it started do, too.

    They inherit that, but KWin gives it up for its threads, and would be measured waiting for a processor.
    """
    policy = os.sched_getscheduler(0)
    if policy not in (os.SCHED_FIFO, os.SCHED_RR):
        return
    for process_id in processes.alive():
        # Some end meanwhile.
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            for thread in Path(f"/proc/{process_id}/task").iterdir():
                os.sched_setscheduler(int(thread.name), policy, os.sched_getparam(0))
