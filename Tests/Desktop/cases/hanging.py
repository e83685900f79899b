"""Applications and window managers that stop answering: the program goes on."""

import os
import signal
import time

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.oracle import expected
from harness.rect import Rect
from harness.settling import settles_on
from harness.window_managers import WINDOW_MANAGERS

from . import case_for_each

NATURAL = Rect(311, 173, 762, 503)
LEFT = Rect(0, 0, 960, 1080)
RIGHT = Rect(960, 0, 960, 1080)
# The longest time for which one press may delay the next one, on a machine that is busy with other tests.
PATIENCE = 2.0


def until_free(product, what: str) -> None:
    """Checks that the program has finished handling the press, and in time."""
    started = time.monotonic()
    product.until_at_rest()
    spent = time.monotonic() - started
    assert spent < PATIENCE, f"{what} kept the program busy for {spent:.2f} s"


@case_for_each("desktop.hanging-application", WINDOW_MANAGERS)
def a_hanging_application_delays_no_other(program, manager):
    with Desktop(program, name=f"hanging-application.{manager}") as desktop:
        desktop.start_window_manager(manager)
        hung = desktop.start(APPLICATIONS["mousepad"])
        other = desktop.start(APPLICATIONS["featherpad"])
        for one in (hung, other):
            desktop.wait_for(one)
            desktop.windows.place(one.window, NATURAL)
        screen = desktop.visible_frame()
        left, right = LEFT._replace(height=screen.height), RIGHT._replace(height=screen.height)
        product = desktop.launch()
        desktop.windows.activate(hung.window)
        os.kill(hung.process.pid, signal.SIGSTOP)
        try:
            desktop.keyboard.press("leftHalf")
            until_free(product, "a hung application")
            desktop.windows.activate(other.window)
            desktop.keyboard.press("rightHalf")
            until_free(product, "an application beside a hung one")
            desktop.holds_frame(other.window, right, "frame of the application that answers")
        finally:
            os.kill(hung.process.pid, signal.SIGCONT)
        desktop.windows.activate(hung.window)
        desktop.press(product, "leftHalf")
        desktop.holds_frame(hung.window, left, "frame of the application that answers again")


@case_for_each("desktop.hanging-window-manager", WINDOW_MANAGERS)
def a_window_manager_that_hangs_does_not_hang_the_program(program, manager):
    with Desktop(program, name=f"hanging-window-manager.{manager}") as desktop:
        desktop.start_window_manager(manager)
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop.windows.place(editor.window, NATURAL)
        height = desktop.visible_frame().height
        product = desktop.launch()
        with desktop.window_manager_hangs():
            for action in ("leftHalf", "rightHalf", "center"):
                desktop.keyboard.press(action)
                until_free(product, f"{action} under a hung window manager")
        desktop.windows.fence()
        desktop.windows.activate(editor.window)
        desktop.press(product, "rightHalf")
        desktop.holds_frame(editor.window, RIGHT._replace(height=height), "frame once the window manager answers again")
        product.until_status("Active")


@case_for_each("desktop.late-answer", WINDOW_MANAGERS)
def a_window_that_rounds_its_size_is_at_the_edge_once_a_slow_window_manager_answers(program, manager):
    with Desktop(program, name=f"late-answer.{manager}") as desktop:
        desktop.start_window_manager(manager)
        terminal = desktop.open(APPLICATIONS["xterm"])
        desktop.windows.place(terminal.window, NATURAL)
        settles = settles_on(desktop.windows, terminal.window, terminal.application, desktop.manager)
        wanted = expected("rightHalf", desktop.windows.frame(terminal.window), desktop.visible_frame(), settles)
        product = desktop.launch()
        product.until_status("Active")
        with desktop.window_manager_hangs():
            desktop.keyboard.press("rightHalf")
            until_free(product, "a press under a slow window manager")
        desktop.holds_frame(terminal.window, wanted, "frame once the window manager has answered")
