"""A window manager that hangs: stopped by a signal, and continued at the end."""

import os
import select
import signal
from contextlib import contextmanager

from Xlib import display
from Xlib.protocol import request

from .waiting import until

# The server's time to reply, in seconds. A longer wait only costs another attempt.
REPLYING = 0.5


@contextmanager
def hanging(process_id: int, server: str):
    """Stops this child process, a client of the server, for the length of the block.

    A client that holds the server (GrabServer) when it stops would hang every other client too, the test included.
    KWin, for one, holds it for an instant after each change of a size. So this stops it at a moment when it does not.
    """
    connection = display.Display(server)

    def has_stopped_alone() -> bool:
        os.kill(process_id, signal.SIGSTOP)
        os.waitid(os.P_PID, process_id, os.WSTOPPED | os.WEXITED | os.WNOWAIT)
        reply = request.GetInputFocus(display=connection.display, defer=True)
        connection.flush()
        if select.select([connection], [], [], REPLYING)[0]:
            reply.reply()
            return True
        os.kill(process_id, signal.SIGCONT)
        reply.reply()
        return False

    try:
        until(has_stopped_alone, "the window manager not to hold the server")
        yield
    finally:
        os.kill(process_id, signal.SIGCONT)
        connection.close()
