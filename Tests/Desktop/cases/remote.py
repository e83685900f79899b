"""Remote control of the program: by the command line, and over the message bus."""

import json
import os
import shutil
import signal
import subprocess
import sys
from pathlib import Path

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.keyboard import SHORTCUTS
from harness.product import run_to_end
from harness.rect import Rect
from harness.skipping import Skipped
from harness.waiting import until

from . import case
from .rules import OWN, start_with_rules
from .session import keys_and_rules_work

LEFT = Rect(0, 0, 960, 1080)
RIGHT = Rect(960, 0, 960, 1080)
NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}


def ask(desktop, *options, status=0, environment=None):
    """Runs the program with options that address the running one. Returns its output from the expected stream."""
    ended, output, errors, seconds = run_to_end(desktop.session, desktop.program, *options, environment=environment)
    seen = f"{options}: status {ended}, {output!r}, {errors!r}, {seconds:.2f} s"
    assert ended == status and seconds < 1.0, seen
    if status == 0 or "--json" in options:
        assert errors == "", seen
        return output
    assert output == "" and errors.count("\n") == 1 and errors.startswith("tessel: "), seen
    return errors


def status_of(desktop, environment=None):
    return json.loads(ask(desktop, "--status", "--json", environment=environment))


def owner_on_bus(desktop):
    """The process that owns the program's name on the bus, or None."""
    asked = subprocess.run(
        ["dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
         "org.freedesktop.DBus.GetConnectionUnixProcessID", "string:org.corvid.Tessel"],
        stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=5, check=False,
        env=desktop.session.environment,
    )
    return int(asked.stdout.split()[1]) if asked.returncode == 0 else None


@case("desktop.remote.status")
def it_reports_its_status(program):
    with Desktop(program, name="remote.status") as desktop:
        # Its own configuration: openbox binds the arrows.
        desktop.start_window_manager("openbox", keys_free=False)
        assert ask(desktop, "--status", "--json", status=1) == '{"running":false}\n'
        assert "not running" in ask(desktop, "--status", status=1)
        product = desktop.launch()
        until(lambda: product.status.startswith("Some shortcuts are taken"), "the shortcuts to be taken")
        reported = status_of(desktop)
        assert (reported["running"], reported["backend"], reported["status"]) == (True, "X11", "shortcutsTaken"), reported
        assert (reported["enabled"], reported["trusted"], reported["rules"]) == (True, True, {}), reported
        assert reported["statusText"] == product.status, reported
        taken = {shortcut["action"] for shortcut in reported["shortcuts"] if shortcut["state"] == "taken"}
        assert taken == {"leftHalf", "rightHalf", "maximize", "maximizeHeight"}, taken
        active = {shortcut["action"] for shortcut in reported["shortcuts"] if shortcut["state"] == "active"}
        assert taken | active == set(SHORTCUTS), reported
        text = ask(desktop, "--status")
        assert product.status in text and "Ctrl+Alt+C" in text and "No app rules" in text, text
        version = run_to_end(desktop.session, program, "--version")[1].split()[1]
        assert reported["version"] == version and version in text, reported


@case("desktop.remote.perform")
def it_moves_the_focused_window(program):
    with Desktop(program, name="remote.perform") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        assert "focus" in ask(desktop, "--perform", "center", status=1)
        editor = desktop.open(APPLICATIONS["mousepad"])
        assert ask(desktop, "--perform", "left-half") == ""
        desktop.holds_frame(editor.window, LEFT, "frame")
        assert json.loads(ask(desktop, "--perform", "rightHalf", "--json")) == {"done": True}
        desktop.holds_frame(editor.window, RIGHT, "frame")
        assert "maximize-height" in ask(desktop, "--perform", "upwards", status=2)


@case("desktop.remote.perform-paused")
def it_moves_nothing_while_paused(program):
    with Desktop(program, name="remote.perform-paused") as desktop:
        desktop.session.settings("<key>enabled</key><false/>")
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        before = desktop.windows.frame(editor.window)
        product = desktop.launch()
        product.until_status("Paused")
        assert "paused" in ask(desktop, "--perform", "left-half", status=1)
        assert json.loads(ask(desktop, "--json", "--perform", "left-half", status=1))["error"] == "paused"
        desktop.windows.fence()
        assert desktop.windows.frame(editor.window) == before, "the window moved"
        assert {shortcut["state"] for shortcut in status_of(desktop)["shortcuts"]} == {"off"}


@case("desktop.remote.rule")
def it_keeps_a_rule(program):
    with Desktop(program, name="remote.rule") as desktop:
        settings = desktop.session.settings("<key>enabled</key><true/>")
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        ask(desktop, "--rule", "org.example.Editor.desktop", "maximize")
        ask(desktop, "--rule", "org.example.Player", "center")
        written = settings.read_text()
        assert "org.example.Editor<" in written and "org.example.Player<" in written, written
        rules = {"org.example.Editor": "maximize", "org.example.Player": "center"}
        assert status_of(desktop)["rules"] == rules
        ask(desktop, "--rule", "org.example.Player", "none")
        product.terminate()
        assert "org.example.Player" not in settings.read_text(), "the rule is still there"
        # The next process reads the written settings.
        desktop.launch().until_status("Active")
        assert status_of(desktop)["rules"] == {"org.example.Editor": "maximize"}


@case("desktop.remote.quit")
def it_ends_and_frees_its_keys(program):
    with Desktop(program, name="remote.quit") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        assert set(held_by_others(desktop.server.display)) == set(SHORTCUTS)
        ask(desktop, "--quit")
        # At once: the reply means that the keys are free.
        assert not held_by_others(desktop.server.display), "a grab outlived the program"
        assert product.ended() == 0 and product.errors() == "", product.errors()
        assert "not running" in ask(desktop, "--quit", status=1)
        desktop.launch().until_status("Active")


@case("desktop.remote.no-bus")
def it_answers_without_a_bus(program):
    with Desktop(program, name="remote.no-bus") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch(environment=NO_BUS)
        product.until_status("Active")
        assert status_of(desktop, NO_BUS)["status"] == "active"
        ask(desktop, "--perform", "left-half", environment=NO_BUS)
        desktop.holds_frame(editor.window, LEFT, "frame")
        assert "already running" in ask(desktop, environment=NO_BUS)
        ask(desktop, "--quit", environment=NO_BUS)
        assert product.ended() == 0 and product.errors() == "", product.errors()


@case("desktop.remote.no-display")
def without_a_display_it_asks_over_the_bus(program):
    with Desktop(program, name="remote.no-display") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        until(lambda: owner_on_bus(desktop) == product.process.pid, "the name on the bus to be the program's")
        no_display = {"DISPLAY": None}
        assert status_of(desktop, no_display)["status"] == "active"
        ask(desktop, "--quit", environment=no_display)
        assert product.ended() == 0 and product.errors() == "", product.errors()
        assert "not running" in ask(desktop, "--status", status=1, environment=no_display)


@case("desktop.remote.bus-restarts")
def it_survives_its_bus_and_finds_the_next(program):
    with Desktop(program, name="remote.bus-restarts") as desktop:
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {OWN: "maximize"})
        until(lambda: owner_on_bus(desktop) == product.process.pid, "the name on the bus to be the program's")
        socket = desktop.session.runtime / "bus"
        bus = next(process for process in desktop.session.processes.started if process.args[0] == "dbus-daemon")
        desktop.session.processes.end(bus, signal.SIGKILL)
        socket.unlink()
        # It keeps working meanwhile.
        assert status_of(desktop)["status"] == "active"
        keys_and_rules_work(desktop, product)
        desktop.session.start(bus.args, "bus")
        until(socket.exists, "the session bus")
        until(lambda: owner_on_bus(desktop) == product.process.pid, "the name to be the program's again", 20.0)
        keys_and_rules_work(desktop, product)
        product.terminate()


def abstract_names():
    """The program's abstract socket names on this machine, whoever started it."""
    return [line.split()[-1] for line in Path("/proc/net/unix").read_text().splitlines() if "@org.corvid.Tessel" in line]


def session_of(desktop):
    """The program's name of the session: its display and screen."""
    return f"{desktop.server.display}.0"


@case("desktop.remote.socket")
def it_is_found_in_the_runtime_folder_whatever_happens_there(program):
    with Desktop(program, name="remote.socket") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        session = session_of(desktop)
        own = f"{os.getuid()}/{session}"
        assert not [name for name in abstract_names() if name.endswith(own)], "a sandbox could reach it"
        folder = desktop.session.runtime / "tessel"
        files = [f"{session}.lock", f"{session}.socket"]

        def named():
            return sorted(file.name for file in folder.glob("*")) if folder.exists() else None

        assert named() == files, named()
        # Files that a killed program has left do not count.
        os.kill(product.process.pid, signal.SIGKILL)
        product.ended()
        assert named() == files, named()
        assert "not running" in ask(desktop, "--status", status=1)
        product = desktop.launch()
        product.until_status("Active")
        assert status_of(desktop)["status"] == "active"
        # A cleanup program may remove the folder.
        shutil.rmtree(folder)
        until(lambda: named() == files, "the socket to be back", saw=named)
        assert status_of(desktop)["status"] == "active"
        assert "already running" in ask(desktop)
        ask(desktop, "--quit")
        assert product.ended() == 0 and product.errors() == "", product.errors()
        assert named() == [], named()


# Listens at an abstract name as another user.
SQUATTER = """
import os, socket, sys
os.setgid(65534)
os.setuid(65534)
held = socket.socket(socket.AF_UNIX)
held.bind("\\0" + sys.argv[1])
held.listen()
print("listening", flush=True)
sys.stdin.read()
"""


@case("desktop.remote.squatter")
def another_user_on_its_name_is_called_that(program):
    if os.getuid() != 0:
        raise Skipped("only the superuser can be another user")
    with Desktop(program, name="remote.squatter") as desktop:
        desktop.start_window_manager("openbox")
        name = f"org.corvid.Tessel/{os.getuid()}/{session_of(desktop)}"
        with subprocess.Popen(
            [sys.executable, "-c", SQUATTER, name], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        ) as squatter:
            assert squatter.stdout.readline() == "listening\n"
            # With a runtime folder, the squatter does no harm.
            product = desktop.launch()
            product.until_status("Active")
            assert status_of(desktop)["status"] == "active"
            ask(desktop, "--quit")
            product.ended()
            bare = {"XDG_RUNTIME_DIR": "/nonexistent"}
            assert "another user" in ask(desktop, status=1, environment=bare)
            assert "another user" in ask(desktop, "--status", status=1, environment=bare)
            squatter.stdin.close()
            squatter.wait()
        product = desktop.launch(environment=bare)
        product.until_status("Active")
        assert [found for found in abstract_names() if found.endswith(name)], abstract_names()
        assert status_of(desktop, bare)["status"] == "active"
        ask(desktop, "--quit", environment=bare)
        assert product.ended() == 0


@case("desktop.remote.two-sessions")
def of_two_on_one_bus_each_answers_its_own_display(program):
    with Desktop(program, name="remote.two-1") as first, Desktop(program, name="remote.two-2") as second:
        # As of one user: one bus, one runtime folder.
        shared = ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")
        bus = {name: first.session.environment[name] for name in shared}
        products = []
        for desktop in (first, second):
            desktop.start_window_manager("openbox")
            products.append(desktop.launch(environment=bus))
            products[-1].until_status("Active")
            if desktop is first:
                until(lambda: owner_on_bus(first) == products[0].process.pid, "the name to be the first one's")
        ask(second, "--rule", "org.example.Second", "center", environment=bus)
        assert status_of(second, bus)["rules"] == {"org.example.Second": "center"}
        assert status_of(first, bus)["rules"] == {}
        assert owner_on_bus(first) == products[0].process.pid
        ask(first, "--quit", environment=bus)
        until(lambda: owner_on_bus(first) == products[1].process.pid, "the name to go to the second")


@case("desktop.remote.streams")
def it_works_without_its_standard_streams_and_reports_a_lost_answer(program):
    with Desktop(program, name="remote.streams") as desktop:
        desktop.start_window_manager("openbox")
        for closed in ("2>&-", ">&- 2>&-", "<&- >&- 2>&-"):
            running = desktop.session.start(["sh", "-c", f'exec "$0" {closed}', str(program)], "closed")
            until(lambda: run_to_end(desktop.session, program, "--status")[0] == 0, f"it to run with {closed}")
            # It cannot log that the settings are not writable. Nothing else is lost.
            settings = desktop.session.home / ".config/tessel"
            settings.rename(settings.with_name("away"))
            settings.write_text("in the way of the folder")
            ask(desktop, "--rule", "org.example.Any", "center")
            now = status_of(desktop)
            assert (now["status"], now["rules"]) == ("active", {"org.example.Any": "center"}), f"{closed}: {now}"
            assert held_by_others(desktop.server.display) == all_held(), closed
            settings.unlink()
            settings.with_name("away").rename(settings)
            if closed != "<&- >&- 2>&-":
                ask(desktop, "--quit")
                assert running.wait(5.0) == 0, closed
        for options in (("--status",), ("--status", "--json"), ("--help",), ("--version",)):
            with open("/dev/full", "w") as full:
                done = subprocess.run(
                    [str(program), *options], stdin=subprocess.DEVNULL, stdout=full, stderr=subprocess.PIPE, text=True,
                    timeout=5, check=False, env=desktop.session.environment,
                )
            seen = f"{options}: status {done.returncode}, {done.stderr!r}"
            assert done.returncode == 1 and "No space left on device" in done.stderr, seen
        ask(desktop, "--quit")
        assert running.wait(5.0) == 0


@case("desktop.remote.hangs")
def one_that_hangs_is_not_waited_for_long(program):
    with Desktop(program, name="remote.hangs") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        os.kill(product.process.pid, signal.SIGSTOP)
        try:
            for options in (("--status",), ()):
                ended, output, errors, seconds = run_to_end(desktop.session, program, *options)
                seen = f"{options}: status {ended}, {output!r}, {errors!r}, {seconds:.2f} s"
                assert ended == 1 and output == "" and "answer" in errors and seconds < 3.0, seen
        finally:
            os.kill(product.process.pid, signal.SIGCONT)
        until(lambda: status_of(desktop)["status"] == "active", "it to answer again")
