"""The processes of one test: started in process groups of their own, ended by id, all ended with the test.

Every process carries a mark in its environment. Everything that it starts inherits the mark, however it detaches
itself: services that the session bus activates, helpers that fork away. At the end the mark finds them all.
"""

import ctypes
import os
import signal
import subprocess
import uuid
from pathlib import Path

from .skipping import Skipped
from .waiting import PATIENCE, STARTING, until

MARK = "TESSEL_DESKTOP_TEST"
PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36

_libc = ctypes.CDLL(None, use_errno=True)


def _die_with_parent() -> None:
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


class Processes:
    def __init__(self, logs: Path):
        self.mark = uuid.uuid4().hex
        self.logs = logs
        self.started: list[subprocess.Popen] = []
        # This process adopts their orphans, so that it can wait for them.
        _libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)

    def start(self, command: list[str], environment: dict[str, str], log: str, **options) -> subprocess.Popen:
        """Starts a command in a process group of its own; its output goes to the log unless `options` say otherwise."""
        with open(self.logs / f"{log}.log", "ab") as output:
            options.setdefault("stdout", output)
            options.setdefault("stderr", output)
            options.setdefault("stdin", subprocess.DEVNULL)
            try:
                process = subprocess.Popen(
                    command,
                    env={**environment, MARK: self.mark},
                    start_new_session=True,
                    preexec_fn=_die_with_parent,
                    **options,
                )
            except FileNotFoundError:
                raise Skipped(f"{command[0]} is not installed") from None
        self.started.append(process)
        return process

    def run(self, command: list[str], environment: dict[str, str], seconds: float = STARTING) -> str:
        """Runs a command to its end and returns what it printed; fails if it failed."""
        try:
            done = subprocess.run(
                command,
                env={**environment, MARK: self.mark},
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=seconds,
                check=False,
            )
        except FileNotFoundError:
            raise Skipped(f"{command[0]} is not installed") from None
        assert done.returncode == 0, f"{' '.join(command)} ended with {done.returncode}: {done.stderr.strip()}"
        return done.stdout

    def end(self, process: subprocess.Popen, number: int = signal.SIGTERM, seconds: float = PATIENCE) -> int:
        """Signals one process, waits for it, then ends what is left of its group. Returns the exit status."""
        if process.poll() is None:
            os.kill(process.pid, number)
            try:
                process.wait(seconds)
            except subprocess.TimeoutExpired:
                self._kill_group(process)
                process.wait(seconds)
        self._kill_group(process)
        return process.returncode

    def alive(self) -> dict[int, str]:
        """Every living process that carries this test's mark, with its command line."""
        self._reap()
        found = {}
        wanted = f"{MARK}={self.mark}".encode()
        for entry in os.listdir("/proc"):
            if not entry.isdigit() or int(entry) == os.getpid():
                continue
            try:
                if wanted in Path("/proc", entry, "environ").read_bytes().split(b"\0"):
                    command = Path("/proc", entry, "cmdline").read_bytes().replace(b"\0", b" ").decode().strip()
                    if command:
                        found[int(entry)] = command
            except OSError:
                continue
        return found

    def end_all(self) -> None:
        """Ends everything; no process with the mark survives.

        The first process is the server, which removes its files on a normal end request. The others leave nothing
        outside the test's directory.
        """
        for process in self.started[1:]:
            self._kill_group(process)
        for process in self.started[1:]:
            process.wait(PATIENCE)
        for process in self.started[:1]:
            self.end(process)
        for process_id in self.alive():
            try:
                os.kill(process_id, signal.SIGKILL)
            except ProcessLookupError:
                pass
        until(lambda: not self.alive(), "every process of the test to be gone", PATIENCE, self.alive)

    def _kill_group(self, process: subprocess.Popen) -> None:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass

    def _reap(self) -> None:
        """Reaps orphans that ended. The harness waits elsewhere for the processes that it started itself."""
        own = {process.pid for process in self.started}
        for entry in Path("/proc/self/task", str(os.getpid()), "children").read_text().split():
            if int(entry) in own:
                continue
            try:
                os.waitpid(int(entry), os.WNOHANG)
            except ChildProcessError:
                pass
