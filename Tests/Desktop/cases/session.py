"""The life of a session: suspended and resumed, locked, without its window manager for some time, started in any
order."""

import json
import os
import shutil
import signal
import time
from contextlib import closing
from pathlib import Path

from harness.applications import APPLICATIONS, Application, own_window
from harness.desktop import Desktop, RunningApplication
from harness.grabs import all_held, held_by_others
from harness.locker import Locker
from harness.product import run_to_end
from harness.rect import Rect
from harness.skipping import require
from harness.waiting import until

from . import case, case_for_each
from .rules import OWN, is_placed, launch, start_with_rules, stays
from .window_manager_changes import POLL

LEFT = Rect(0, 0, 960, 1080)
# The time after a placement by a rule at which the program checks whether the window was moved back.
LOOKS_AGAIN_AFTER = 0.4
# Longer than the program's timeouts, and than the time between two checks for the window manager.
FROZEN = 3.0


def until_passed(seconds: float) -> None:
    """Waits for a fixed time, where time is the subject."""
    over = time.monotonic() + seconds
    until(lambda: time.monotonic() >= over, "the time to pass", 2 * seconds)


def is_placed_for_good(desktop: Desktop, product, running: RunningApplication, action: str) -> None:
    """Waits until the window has the frame of the action. From then on a user may move it and it stays."""
    is_placed(desktop, running, action)
    until_passed(2 * LOOKS_AGAIN_AFTER)
    product.until_at_rest()


def keys_and_rules_work(desktop: Desktop, product) -> None:
    """Our own window is placed by its rule at its launch, and moved by a press; then it ends."""
    running = launch(desktop, own_window())
    is_placed_for_good(desktop, product, running, "maximize")
    desktop.windows.activate(running.window)
    desktop.press(product, "leftHalf")
    desktop.holds_frame(running.window, LEFT, "the frame after a press")
    desktop.end(running)


def is_running(desktop: Desktop) -> bool:
    return run_to_end(desktop.session, desktop.program, "--status")[0] == 0


@case("desktop.session.frozen")
def frozen_and_thawed_it_works_at_once(program):
    with Desktop(program, name="session.frozen") as desktop:
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {OWN: "maximize"})
        os.kill(product.process.pid, signal.SIGSTOP)
        running = launch(desktop, own_window())
        until_passed(FROZEN)
        os.kill(product.process.pid, signal.SIGCONT)
        is_placed(desktop, running, "maximize")
        desktop.end(running)
        keys_and_rules_work(desktop, product)
        assert product.status == "Active" and product.errors() == "", product.errors()


@case_for_each("desktop.session.locked", ("openbox", "metacity", "kwin_x11"))
def a_locked_screen_keeps_the_keys_and_windows_behind_it_are_placed(program, manager):
    with Desktop(program, name=f"session.locked.{manager}") as desktop:
        desktop.start_window_manager(manager)
        editor = desktop.open(APPLICATIONS["featherpad"])
        product = start_with_rules(desktop, {OWN: "maximize"})
        with closing(Locker(desktop.server.display)) as locker:
            locker.lock()
            before = desktop.windows.frame(editor.window)
            desktop.press(product, "leftHalf")
            assert locker.typed() == len(("Control", "Alt", "Left")), "the keys did not go to the locker"
            running = launch(desktop, own_window())
            is_placed(desktop, running, "maximize")
            assert desktop.windows.frame(editor.window) == before, "a window moved behind the lock"
            desktop.end(running)
            locker.unlock()
        assert held_by_others(desktop.server.display) == all_held(), "a shortcut was lost to the locker"
        desktop.windows.activate(editor.window)
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, LEFT, "frame")
        keys_and_rules_work(desktop, product)
        assert product.statuses == ["Active"] and product.errors() == "", f"{product.statuses}, {product.errors()}"


@case_for_each("desktop.session.restart", ("openbox", "xfwm4", "metacity"))
def a_restart_of_the_window_manager_fires_no_rule_anew(program, manager):
    with Desktop(program, name=f"session.restart.{manager}") as desktop:
        desktop.start_window_manager(manager)
        product = start_with_rules(desktop, {OWN: "maximize"})
        running = launch(desktop, own_window())
        is_placed_for_good(desktop, product, running, "maximize")
        # Once so fast that the program never sees a time without a window manager, and once slowly enough.
        for noticed in (False, True):
            desktop.windows.place(running.window, Rect(311, 173, 420, 300))
            size = desktop.windows.client_rect(running.window).size
            desktop.stop_window_manager(signal.SIGKILL)
            if noticed:
                product.until_status("Waiting for permission", POLL)
            desktop.start_window_manager(manager)
            desktop.adopt(running)
            product.until_at_rest()
            product.until_status("Active", POLL)
            keys_and_rules_work(desktop, product)
            assert desktop.windows.client_rect(running.window).size == size, "the window was placed once more"


@case("desktop.session.begins-without-window-manager")
def windows_that_were_there_before_the_window_manager_are_left_alone(program):
    with Desktop(program, name="session.begins") as desktop:
        application = desktop.start(own_window())
        log = desktop.session.logs / "own.log"
        until(lambda: log.exists() and log.read_text(), "the window to be mapped")
        product = start_with_rules(desktop, {OWN: "maximize"}, status="Waiting for permission")
        desktop.start_window_manager("openbox")
        desktop.wait_for(application)
        product.until_status("Active", POLL)
        stays(desktop, product, application.window, "a window that was there before")
        keys_and_rules_work(desktop, product)
        stays(desktop, product, application.window, "a window that was there before")


@case("desktop.session.terminal-closed")
def it_ends_with_its_terminal_unless_hang_up_is_ignored(program):
    with Desktop(program, name="session.terminal-closed") as desktop:
        require("xterm", "xterm")
        desktop.start_window_manager("openbox")
        # The second is like nohup, which also detaches from the terminal.
        for command, stays_behind in (f"exec {program}", False), (f"trap '' HUP; exec {program}", True):
            terminal = desktop.open(
                Application("terminal", "xterm", ("xterm", "-fa", "Monospace", "-e", "sh", "-c", command))
            )
            until(lambda: is_running(desktop), f"{command} to run")
            until(lambda: held_by_others(desktop.server.display) == all_held(), "the shortcuts to be taken")
            # The kernel sends SIGHUP for it.
            desktop.end(terminal)
            if stays_behind:
                assert is_running(desktop), "it ended with its terminal"
                assert run_to_end(desktop.session, program, "--quit")[0] == 0
            else:
                until(lambda: not is_running(desktop), "it to end with its terminal")
            assert not held_by_others(desktop.server.display), "a grab outlived the program"


@case("desktop.session.login-item")
def the_login_item_starts_the_program(program):
    with Desktop(program, name="session.login-item") as desktop:
        require("gio", "libglib2.0-bin")
        require("desktop-file-validate", "desktop-file-utils")
        session = desktop.session
        # A path with every special character of such entries.
        installed = session.directory / "a place" / "'half' of $HOME \"and\" `more`" / "tessel"
        installed.parent.mkdir(parents=True)
        shutil.copy2(program, installed)
        session.run([os.environ["TESSEL_LOGIN_ITEM"], str(installed)])
        entry = session.home / ".config/autostart/org.corvid.Tessel.desktop"
        session.run(["desktop-file-validate", str(entry)])
        desktop.start_window_manager("openbox")
        session.start(["gio", "launch", str(entry)], "launcher")
        until(lambda: is_running(desktop), "the program to run")
        reported = json.loads(run_to_end(session, program, "--status", "--json")[1])
        running = [process for process in session.processes.alive() if _executable(process) == installed]
        assert len(running) == 1 and reported["running"], f"{running}, {reported}"
        assert run_to_end(session, program, "--quit")[0] == 0
        until(lambda: not is_running(desktop), "the program to end")
        session.run([os.environ["TESSEL_LOGIN_ITEM"], str(installed), "--remove"])
        assert not entry.exists(), "it still opens at login"


def _executable(process: int) -> Path | None:
    try:
        return Path(os.readlink(f"/proc/{process}/exe"))
    except OSError:
        return None
