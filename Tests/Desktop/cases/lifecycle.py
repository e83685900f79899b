"""How the program starts, refuses to start, and ends."""

import os
import plistlib
import signal
import sys

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.popover import Popover
from harness.product import run_to_end
from harness.rect import Rect
from harness.session import Session

from . import case, case_for_each
from .rules import OWN, start_with_rules
from .session import keys_and_rules_work

LEFT = Rect(0, 0, 960, 1080)


@case_for_each("desktop.ends-on", ("SIGTERM", "SIGINT", "SIGHUP"))
def a_polite_end_leaves_no_grab(program, name):
    with Desktop(program, name=f"ends-on.{name}") as desktop:
        rules = {"org.example.Editor": "maximize"}
        settings = desktop.session.rules(rules)
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        assert held_by_others(desktop.server.display) == all_held(), "not every shortcut is held under every lock key"
        os.kill(product.process.pid, signal.Signals[name])
        status = product.ended()
        assert status == 0, f"ended with {status}"
        assert product.errors() == "", f"printed {product.errors()!r}"
        assert not held_by_others(desktop.server.display), "a grab outlived the program"
        assert plistlib.loads(settings.read_bytes())["rules"] == rules, f"the rules changed: {settings.read_text()}"
        beside = os.listdir(settings.parent)
        assert beside == [settings.name], f"files beside the settings: {beside}"


@case("desktop.server-killed")
def when_the_server_dies_the_program_ends_with_one_line_and_intact_settings(program):
    with Desktop(program, name="server-killed") as desktop:
        settings = desktop.session.settings("<key>enabled</key><true/><key>kept</key><string>as it was</string>")
        before = desktop.session.settings_of(settings)
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        desktop.server.kill()
        status = product.ended()
        errors = product.errors()
        assert status == 1, f"ended with {status}: {errors}"
        assert errors.count("\n") == 1 and errors.endswith("\n"), f"not one line: {errors!r}"
        assert desktop.session.settings_of(settings) == before, "the settings changed"
        beside = os.listdir(settings.parent)
        assert beside == [settings.name], f"files beside the settings: {beside}"


@case("desktop.second-start")
def a_second_start_says_so_and_leaves_the_first_alone(program):
    with Desktop(program, name="second-start") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        status, output, errors, _ = run_to_end(desktop.session, program)
        assert status == 0, f"the second ended with {status}"
        assert (output + errors).count("\n") == 1, f"not one line: {output!r} {errors!r}"
        product.until_status("Active")
        # It has opened the popover. While the popover has the keyboard, no window is active.
        popover = Popover(desktop, product)
        popover.until_open()
        popover.close()
        desktop.windows.activate(editor.window)
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, LEFT, "frame")
        product.terminate()
        third = desktop.launch()
        third.until_status("Active")


@case("desktop.two-sessions")
def each_of_two_displays_has_a_program_of_its_own(program):
    with Desktop(program, name="two-sessions-1") as first, Desktop(program, name="two-sessions-2") as second:
        for desktop in (first, second):
            desktop.start_window_manager("openbox")
            editor = desktop.open(APPLICATIONS["mousepad"])
            product = desktop.launch()
            product.until_status("Active")
            desktop.press(product, "leftHalf")
            desktop.holds_frame(editor.window, LEFT, "frame")


@case("desktop.no-display")
def without_a_display_it_says_so_at_once(program):
    session = Session()
    try:
        for display in (None, "", ":9876", "nonsense", ":", "[::1]:3"):
            status, output, errors, seconds = run_to_end(session, program, environment={"DISPLAY": display})
            seen = f"DISPLAY={display!r}: status {status}, {output!r}, {errors!r}, {seconds:.2f} s"
            assert status == 1 and output == "", seen
            assert errors.count("\n") == 1 and errors.endswith("\n") and len(errors) > 10, seen
            assert seconds < 1.0, seen
    finally:
        session.close()


@case("desktop.no-reader")
def a_reader_of_its_errors_that_has_gone_does_not_kill_it(program):
    lose_reader = (
        "import os, signal, sys; reading, writing = os.pipe(); os.dup2(writing, 2); os.close(reading);"
        "signal.signal(signal.SIGPIPE, signal.SIG_DFL); os.execv(sys.argv[1], sys.argv[1:])"
    )
    session = Session()
    try:
        status, output, _, _ = run_to_end(
            session, program, environment={"DISPLAY": None}, prefix=(sys.executable, "-c", lose_reader)
        )
        assert status == 1 and output == "", f"status {status}, {output!r}"
    finally:
        session.close()


@case("desktop.options")
def help_and_version_need_no_display(program):
    session = Session()
    try:
        for option in ("--help", "--version"):
            status, output, errors, seconds = run_to_end(session, program, option)
            seen = f"{option}: status {status}, {output!r}, {errors!r}, {seconds:.2f} s"
            assert status == 0 and errors == "" and output.endswith("\n") and seconds < 1.0, seen
        status, output, errors, _ = run_to_end(session, program, "--nonsense")
        seen = f"--nonsense: status {status}, {output!r}, {errors!r}"
        assert status not in (0, 1) and output == "" and "--nonsense" in errors, seen
    finally:
        session.close()


@case("desktop.no-bus")
def it_works_without_a_message_bus(program):
    with Desktop(program, name="no-bus") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = start_with_rules(desktop, {OWN: "maximize"}, {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"})
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, LEFT, "frame")
        keys_and_rules_work(desktop, product)
