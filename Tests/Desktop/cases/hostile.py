"""Broken and hostile applications and window managers: the program continues without delay and logs nothing."""

import os
import random
import signal
from contextlib import contextmanager

from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.hostile_client import HostileClient
from harness.rect import Rect
from harness.responsiveness import LIMIT, Responsiveness
from harness.waiting import until

from . import case
from .rules import OWN, is_placed, launch, start_with_rules

LEFT = Rect(0, 0, 960, 1080)
RIGHT = Rect(960, 0, 960, 1080)
MIB = 16

# Every property of a window that the program reads, and some that it does not.
PROPERTIES = (
    "_NET_WM_PID", "WM_CLASS", "_NET_WM_STATE", "_NET_WM_WINDOW_TYPE", "WM_TRANSIENT_FOR", "_NET_FRAME_EXTENTS",
    "_GTK_FRAME_EXTENTS", "WM_NORMAL_HINTS", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE", "_NET_WM_DESKTOP",
    "_NET_WM_STRUT", "_NET_WM_STRUT_PARTIAL", "_NET_WM_NAME", "WM_NAME", "WM_HINTS",
)
WORST = 0xFFFFFFFF
VALUES = (
    ("STRING", 8, b""), ("STRING", 8, b"x"), ("CARDINAL", 8, b"\0" * 600), ("WINDOW", 8, b"\xff" * 100_000),
    ("ATOM", 16, [0x7FFF] * 3), ("CARDINAL", 16, []), ("CARDINAL", 32, []), ("STRING", 32, [WORST]),
    ("CARDINAL", 32, [WORST] * 40), ("ATOM", 32, [0x80000000] * 4), ("WINDOW", 32, [0x7FFFFFFF] * 20_000),
)


@contextmanager
def abused(program, name: str, limit: float = LIMIT):
    """A desktop with an editor in front, rules for our own window, the program, and a hostile client.

    The actions inside must not delay the program; afterwards it must be in its former state.
    """
    with Desktop(program, name=name) as desktop:
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {OWN: "maximize"})
        editor = desktop.open(APPLICATIONS["mousepad"])
        client = HostileClient(desktop.server.display)
        try:
            with Responsiveness(product, program, limit):
                yield desktop, product, editor, client
        finally:
            client.close()
        desktop.windows.fence()
        unharmed(desktop, product, editor)


def unharmed(desktop, product, editor) -> None:
    """Checks that it is idle, has printed nothing, and still works."""
    product.until_at_rest()
    assert product.process.poll() is None, f"the program ended with {product.process.returncode}"
    assert product.errors() == "", f"printed {product.errors()!r}"
    desktop.windows.activate(editor.window)
    for action, frame in (("leftHalf", LEFT), ("rightHalf", RIGHT)):
        desktop.press(product, action)
        desktop.holds_frame(editor.window, frame, f"frame after {action}")
    running = launch(desktop, own_window())
    is_placed(desktop, running, "maximize")
    desktop.end(running)
    assert product.errors() == "", f"printed {product.errors()!r}"


@case("desktop.hostile.properties")
def malformed_properties_do_no_harm(program):
    with abused(program, "hostile.properties") as (desktop, product, editor, client):
        running = launch(desktop, own_window())
        is_placed(desktop, running, "maximize")
        target = client.window(running.window)
        for name in PROPERTIES:
            for kind, width, value in VALUES:
                client.put(target, name, kind, width, value)
                desktop.keyboard.press("leftHalf")
                product.until_at_rest()
            client.remove(target, name)
        desktop.end(running)
        # The same before the window is mapped.
        for name in PROPERTIES:
            for kind, width, value in VALUES:
                window = client.root.create_window(240, 180, 420, 300, 0, 0)
                window.set_wm_class("ownwindow", "OwnWindow")
                client.put(window, name, kind, width, value)
                window.map()
                client.connection.sync()
                desktop.keyboard.press("center")
                window.destroy()
            product.until_at_rest()


@case("desktop.hostile.root-properties")
def a_root_window_that_says_nonsense_does_no_harm(program):
    with abused(program, "hostile.root-properties") as (desktop, product, editor, client):
        windows = desktop.windows
        known = {name: windows.cardinals(windows.root, name) for name in
                 ("_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW", "_NET_CURRENT_DESKTOP", "_NET_WORKAREA",
                  "_NET_SUPPORTED", "_NET_SUPPORTING_WM_CHECK")}
        kinds = {"_NET_CLIENT_LIST": "WINDOW", "_NET_ACTIVE_WINDOW": "WINDOW", "_NET_SUPPORTED": "ATOM",
                 "_NET_SUPPORTING_WM_CHECK": "WINDOW"}
        for name, right in known.items():
            for kind, width, value in VALUES:
                client.put(client.root, name, kind, width, value)
                desktop.keyboard.press("leftHalf")
                product.until_at_rest()
            client.remove(client.root, name)
            product.until_at_rest()
            client.put(client.root, name, kinds.get(name, "CARDINAL"), 32, right)


@case("desktop.hostile.client-list")
def a_list_of_windows_may_name_thousands_that_do_not_exist(program):
    with abused(program, "hostile.client-list") as (desktop, product, editor, client):
        right = desktop.windows.managed()
        base = client.root.create_window(0, 0, 1, 1, 0, 0).id + 1000
        for many in (1, 300, 4000, 60_000):
            gone = [base + number for number in range(many)]
            for listed in (gone, gone + right, right + gone, [right[0]] * many):
                client.put(client.root, "_NET_CLIENT_LIST", "WINDOW", 32, listed)
                desktop.keyboard.press("leftHalf")
                product.until_at_rest()
        client.put(client.root, "_NET_CLIENT_LIST", "WINDOW", 32, right)


@case("desktop.hostile.client-list-at-start")
def a_list_that_is_there_at_the_start_may_do_so_too(program):
    with Desktop(program, name="hostile.client-list-at-start") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        client = HostileClient(desktop.server.display)
        right = desktop.windows.managed()
        base = client.root.create_window(0, 0, 1, 1, 0, 0).id + 1000
        client.put(client.root, "_NET_CLIENT_LIST", "WINDOW", 32, [base + number for number in range(4000)] + right)
        product = start_with_rules(desktop, {OWN: "maximize"})
        with Responsiveness(product, program):
            desktop.press(product, "leftHalf")
            desktop.holds_frame(editor.window, LEFT, "frame")
        client.close()
        unharmed(desktop, product, editor)


@case("desktop.hostile.no-window-manager")
def a_list_without_a_window_manager_does_no_harm(program):
    with Desktop(program, name="hostile.no-window-manager") as desktop:
        product = desktop.launch()
        client = HostileClient(desktop.server.display)
        own = client.open("OwnWindow").id
        with Responsiveness(product, program):
            for many in (300, 4000):
                listed = [own] + [own + number for number in range(1000, 1000 + many)]
                client.put(client.root, "_NET_CLIENT_LIST", "WINDOW", 32, listed)
                client.put(client.root, "_NET_ACTIVE_WINDOW", "WINDOW", 32, [own])
                desktop.keyboard.press("leftHalf")
                product.until_at_rest()
        client.remove(client.root, "_NET_CLIENT_LIST")
        client.remove(client.root, "_NET_ACTIVE_WINDOW")
        client.close()
        desktop.start_window_manager("openbox")
        product.until_status("Active", 15.0)
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, LEFT, "frame")
        assert product.errors() == "", f"printed {product.errors()!r}"


@case("desktop.hostile.endless-texts")
def a_title_and_a_class_without_end_do_no_harm(program):
    # The server handles no other request while it assembles such a text, and the window manager reads titles whole.
    # Neither is the subject here.
    with abused(program, "hostile.endless-texts", 4 * LIMIT) as (desktop, product, editor, client):
        for name in ("WM_CLASS", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE", "_NET_WM_STATE"):
            window = client.root.create_window(240, 180, 420, 300, 0, 0)
            window.change_attributes(override_redirect=False)
            length = client.put_endless(window, name, MIB)
            assert length > (MIB - 1) << 20, f"the server takes {length} bytes only"
            right = desktop.windows.managed()
            client.put(client.root, "_NET_CLIENT_LIST", "WINDOW", 32, right + [window.id])
            client.put(client.root, "_NET_ACTIVE_WINDOW", "WINDOW", 32, [window.id])
            desktop.keyboard.press("leftHalf")
            product.until_at_rest()
            client.put(client.root, "_NET_CLIENT_LIST", "WINDOW", 32, right)
            window.destroy()
            client.connection.sync()
        # The titles of a window in use.
        running = launch(desktop, own_window())
        target = client.window(running.window)
        for name in ("WM_NAME", "_NET_WM_NAME"):
            with desktop.window_manager_hangs():
                try:
                    client.put_endless(target, name, MIB)
                    desktop.keyboard.press("leftHalf")
                    product.until_at_rest()
                finally:
                    client.remove(target, name)
        desktop.end(running)


@case("desktop.hostile.stopped")
def an_application_that_stops_at_its_launch_delays_no_other(program):
    with abused(program, "hostile.stopped") as (desktop, product, editor, client):
        stopping = desktop.start(own_window())
        log = desktop.session.logs / "own.log"
        until(lambda: log.read_text(), "the window to be mapped")
        os.kill(stopping.process.pid, signal.SIGSTOP)
        try:
            window = until(lambda: desktop.windows.of_process(stopping.process.pid), "the window to be managed")
            until(lambda: desktop.windows.frame(window).size[0] == 1920, "the stopped one to be placed")
            # Another window of the same kind is placed beside it.
            another = launch(desktop, own_window())
            is_placed(desktop, another, "maximize")
            desktop.end(another)
            for action in ("leftHalf", "rightHalf", "center"):
                desktop.keyboard.press(action)
                product.until_at_rest()
        finally:
            os.kill(stopping.process.pid, signal.SIGCONT)
        desktop.end(stopping)


@case("desktop.hostile.gathered-presses")
def presses_that_gather_behind_a_window_manager_that_hangs_do_not_keep_the_program_from_ending(program):
    with Desktop(program, name="hostile.gathered-presses") as desktop:
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {})
        editor = desktop.open(APPLICATIONS["mousepad"])
        with desktop.window_manager_hangs():
            # Each uses its whole timeout; all together take several seconds.
            for _ in range(6):
                for action in ("leftHalf", "rightHalf", "center"):
                    desktop.keyboard.press(action)
            os.kill(product.process.pid, signal.SIGTERM)
            assert product.ended(1.5) == 0 and product.errors() == "", product.errors()
        unharmed(desktop, start_with_rules(desktop, {OWN: "maximize"}), editor)


@case("desktop.hostile.destroyed")
def windows_that_are_destroyed_at_random_while_they_are_launched_and_moved(program):
    # Each press waits for a window manager that is busy with the others, and a reply takes several turns of the loop,
    # each of which may wait like that.
    with abused(program, "hostile.destroyed", 4 * LIMIT) as (desktop, product, editor, client):
        chance = random.Random(20)
        living = []
        for _ in range(200):
            living.append(client.open(chance.choice(("OwnWindow", "Tkwindow", "Nobody"))))
            if chance.random() < 0.5:
                desktop.keyboard.press(chance.choice(("leftHalf", "maximize", "center")))
                product.until_at_rest()
            if chance.random() < 0.7:
                living.pop(chance.randrange(len(living))).destroy()
                client.connection.flush()
        product.until_at_rest()
        for window in living:
            window.destroy()
        client.connection.sync()
        managed = lambda: desktop.windows.managed()
        until(lambda: not {window.id for window in living} & set(managed()), "all to be gone", 20.0, managed)


@case("desktop.hostile.thousands")
def two_thousand_windows_that_open_and_close_fifty_at_a_time(program):
    # More at once keep the window manager busy for minutes, with or without the program.
    with abused(program, "hostile.thousands", 4 * LIMIT) as (desktop, product, editor, client):
        before = desktop.windows.managed()
        for _ in range(40):
            opened = [client.open("OwnWindow") for _ in range(50)]
            client.connection.sync()
            numbers = {window.id for window in opened}
            managed = lambda: set(desktop.windows.managed())
            until(lambda: numbers <= managed(), "all windows to be managed", 20.0, lambda: len(managed()))
            for window in opened:
                window.destroy()
            client.connection.sync()
            until(lambda: not numbers & managed(), "all windows to be gone", 20.0, lambda: len(managed()))
        assert desktop.windows.managed() == before
