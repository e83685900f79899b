"""Scheduling priorities on a busy machine."""

import contextlib
import os
from pathlib import Path

from harness.processes import Processes


def share_real_time(processes: Processes) -> None:
    """If this process has real-time priority, all threads of the processes that it started get it, too.

    Processes inherit it, but KWin drops it for its threads, and would then be measured while it waits for a processor.
    """
    policy = os.sched_getscheduler(0)
    if policy not in (os.SCHED_FIFO, os.SCHED_RR):
        return
    for process_id in processes.alive():
        # Some threads end meanwhile.
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            for thread in Path(f"/proc/{process_id}/task").iterdir():
                os.sched_setscheduler(int(thread.name), policy, os.sched_getparam(0))
