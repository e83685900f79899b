"""X servers: a virtual one with one screen, and the real one on dummy hardware where monitors can be plugged."""

import os
from pathlib import Path

from .session import Session
from .skipping import Skipped
from .waiting import STARTING, Expired, until

CONFIGURATION = Path(__file__).resolve().parent.parent / "two-monitors.conf"


def _identity(path: str) -> tuple[int, int] | None:
    """The identity of a file, which a later file of the same name does not share; inode numbers alone are reused."""
    try:
        status = os.stat(path)
    except FileNotFoundError:
        return None
    return (status.st_ino, status.st_mtime_ns)


class Server:
    """A running server with the display number that it chose itself."""

    def __init__(self, session: Session, command: list[str]):
        reading, writing = os.pipe()
        self.session = session
        self.process = session.start(
            # Only the server's own fonts, not those installed in addition.
            [*command, "-displayfd", str(writing), "-noreset", "-nolisten", "tcp", "-fp", "built-ins"],
            "server", pass_fds=(writing,),
        )
        os.close(writing)
        os.set_blocking(reading, False)
        self._answer = b""

        def number_arrived() -> bool:
            assert self.process.poll() is None, f"{command[0]} ended with {self.process.returncode}"
            try:
                self._answer += os.read(reading, 64)
            except BlockingIOError:
                pass
            return self._answer.endswith(b"\n")

        try:
            until(number_arrived, f"{command[0]} to choose a display", STARTING)
        finally:
            os.close(reading)
        self.number = int(self._answer)
        self.display = f":{self.number}"
        self._socket = f"/tmp/.X11-unix/X{self.number}"
        self._lock = f"/tmp/.X{self.number}-lock"
        self._made = _identity(self._socket)

    def kill(self) -> None:
        """Ends the server like a crash, and removes the files that it could not remove itself."""
        self.process.kill()
        self.process.wait()
        self.clear_away()

    def clear_away(self) -> None:
        """Removes the files that the server has left. It may do so while another server looks for a free number.

        That server may have taken the number meanwhile.
        """
        if _identity(self._socket) == self._made:
            Path(self._socket).unlink(missing_ok=True)
        try:
            if int(Path(self._lock).read_text()) == self.process.pid:
                os.unlink(self._lock)
        except (FileNotFoundError, ValueError):
            pass


def virtual(session: Session, width: int = 1920, height: int = 1080) -> Server:
    return Server(session, ["Xvfb", "-screen", "0", f"{width}x{height}x24"])


def two_monitors(session: Session) -> Server:
    """One enabled monitor of 1920x1080, DUMMY0, and disconnected ones, DUMMY1 and up."""
    log = str(session.logs / "xorg.log")
    command = ["Xorg", "-config", str(CONFIGURATION), "-logfile", log, "-sharevts", "-novtswitch"]
    try:
        return Server(session, command)
    except (AssertionError, Expired) as failure:
        if os.geteuid() == 0:
            raise
        raise Skipped(f"Xorg with the dummy driver does not start without root here ({failure})") from failure
