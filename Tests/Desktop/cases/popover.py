"""The popover: where it opens, what closes it, and that the program handles everything else meanwhile."""

import os
from pathlib import Path

from harness import servers
from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.monitors import Monitors
from harness.picture import screen
from harness.popover import GAP, WIDTH, Popover
from harness.product import run_to_end
from harness.rect import Rect
from harness.tray import registered_items, start_panel, until_icon
from harness.waiting import until, until_equal

from . import case, case_for_each
from .monitors import FIRST, SMALL_RIGHT
from .rules import OWN, start_with_rules
from .session import keys_and_rules_work

ACTIVE = "uiwindow.split.2x1"
XFCE = "xfce4-panel"
# Inside the item, and far from everything.
ITEM = (16, 16)
OUTSIDE = (1500, 900)
TOOLKIT = ("libQt6Core", "libQt6Quick", "tessel-menu")


def with_panel(desktop: Desktop):
    """The program with its item in a panel along the upper edge, at which the popover will open."""
    start_panel(desktop, XFCE)
    product = desktop.launch()
    product.until_status("Active")
    until_icon(desktop, XFCE, ACTIVE)
    return product, Popover(desktop, product)


def click_item(desktop: Desktop) -> None:
    """Clicks it like a hand, whose pointer arrives before it clicks."""
    desktop.keyboard.point(*ITEM)
    desktop.windows.fence()
    desktop.keyboard.click(*ITEM)


def mapped(product, *names: str) -> list[str]:
    """The libraries in the memory of the process."""
    maps = Path(f"/proc/{product.process.pid}/maps").read_text()
    return [name for name in names if name in maps]


def is_within(inner: Rect, outer: Rect) -> bool:
    return (
        outer.x <= inner.x and outer.y <= inner.y
        and inner.x + inner.width <= outer.x + outer.width and inner.y + inner.height <= outer.y + outer.height
    )


def stays_closed(desktop: Desktop, product, popover: Popover, when: str = "") -> None:
    """Waits until the click or press has been handled, and checks that the popover has not opened again."""
    popover.until_closed(when=when)
    desktop.windows.fence()
    product.until_at_rest()
    assert not popover.is_open(), "the popover opened again"


@case_for_each("desktop.popover.opens", ("openbox", "xfwm4", "kwin_x11"))
def a_click_on_the_item_opens_it_and_everything_else_closes_it(program, manager):
    with Desktop(program, name=f"popover.opens.{manager}") as desktop:
        desktop.start_window_manager(manager)
        editor = desktop.open(APPLICATIONS["mousepad"])
        product, popover = with_panel(desktop)
        work_area = until(desktop.windows.work_area, "the work area")
        for way in ("the item again", "outside", "Escape", "another window"):
            click_item(desktop)
            frame = popover.until_open(when=f", to be closed by {way}")
            assert frame.width == WIDTH, f"{frame.width} wide"
            assert is_within(frame, work_area), f"{frame} is not within {work_area}"
            assert frame.y - work_area.y == GAP, f"{frame} does not hang at the panel"
            assert frame.x <= ITEM[0] + WIDTH / 2, f"{frame} is far from the item"
            if way == "the item again":
                desktop.keyboard.click(*ITEM)
            elif way == "outside":
                desktop.keyboard.click(*OUTSIDE)
            elif way == "Escape":
                desktop.keyboard.chord("Escape")
            else:
                desktop.windows.activate(editor.window)
            stays_closed(desktop, product, popover, f" by {way}")
            desktop.windows.activate(editor.window)
        desktop.press(product, "rightHalf")
        until(lambda: desktop.windows.frame(editor.window).x == 960, "the keys to work afterwards")


@case("desktop.popover.keyboard-returns")
def closed_with_escape_it_gives_the_keyboard_back(program):
    with Desktop(program, name="popover.keyboard-returns") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product, popover = with_panel(desktop)
        for _ in range(3):
            click_item(desktop)
            popover.until_open()
            popover.close()
            until(lambda: desktop.windows.has_input_focus(editor.window), "the editor to have the keyboard")
        product.until_at_rest()
        assert product.errors() == "", product.errors()


@case_for_each("desktop.popover.monitors", ("top", "bottom"))
def it_opens_on_the_monitor_of_the_panel(program, edge):
    with Desktop(program, servers.two_monitors, f"popover.monitors.{edge}") as desktop:
        desktop.start_window_manager("openbox")
        Monitors(desktop).arrange(FIRST, SMALL_RIGHT)
        start_panel(desktop, XFCE, edge, SMALL_RIGHT.output)
        product = desktop.launch()
        product.until_status("Active")
        popover = Popover(desktop, product)
        until(lambda: len(registered_items(desktop) or ()) == 1, "the item to be registered")
        monitor = SMALL_RIGHT.frame
        x, y = monitor.x + 16, monitor.y + (16 if edge == "top" else monitor.height - 16)

        def is_there() -> bool:
            shown = screen(desktop.server.display, Rect(x - 12, y - 12, 24, 24)).convert("L").getextrema()
            return shown[1] - shown[0] > 60

        until(is_there, "the item in the panel")
        desktop.keyboard.click(x, y)
        frame = popover.until_open()
        # The panel draws a line beside its 32 pixels.
        height = 33
        room = Rect(monitor.x, monitor.y + (height if edge == "top" else 0), monitor.width, monitor.height - height)
        assert is_within(frame, room), f"{frame} is not within {room}"
        away = frame.y - room.y if edge == "top" else room.y + room.height - (frame.y + frame.height)
        assert away <= GAP + 1, f"{frame} does not hang at the panel"
        desktop.keyboard.click(*OUTSIDE)
        stays_closed(desktop, product, popover)


@case("desktop.popover.only-when-asked")
def the_toolkit_comes_with_the_first_opening_and_all_else_goes_on(program):
    with Desktop(program, name="popover.only-when-asked") as desktop:
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {OWN: "maximize"})
        popover = Popover(desktop, product)
        keys_and_rules_work(desktop, product)
        assert mapped(product, *TOOLKIT) == [], "the toolkit is in memory before anybody opened the popover"
        editor = desktop.open(APPLICATIONS["mousepad"])
        for action, x in (("rightHalf", 960), ("leftHalf", 0)):
            run_to_end(desktop.session, program)
            popover.until_open()
            # While the popover has the keyboard there is no window for a shortcut.
            before = desktop.windows.frame(editor.window)
            desktop.press(product, action)
            assert desktop.windows.frame(editor.window) == before, "a shortcut moved a window without the keyboard"
            assert popover.is_open(), "a shortcut closed the popover"
            assert held_by_others(desktop.server.display) == all_held(), "keys are free while it is open"
            popover.close()
            until(lambda: desktop.windows.active() == editor.window, "the editor to be active again")
            desktop.press(product, action)
            until_equal(lambda: desktop.windows.frame(editor.window).x, x, "the editor's place after it was open")
        assert mapped(product, *TOOLKIT) == list(TOOLKIT)
        # A window that opens beside the popover is placed.
        run_to_end(desktop.session, program)
        popover.until_open()
        running = desktop.start(own_window("--no-focus"))
        desktop.wait_for(running)
        until_equal(lambda: desktop.windows.frame(running.window).size, (1920, 1080), "the size by the rule")
        desktop.end(running)
        desktop.windows.activate(editor.window)
        popover.until_closed()
        # Timers, bus and X events all still arrive.
        keys_and_rules_work(desktop, product)
        desktop.stop_window_manager()
        product.until_status("Waiting for permission", 13.0)
        desktop.start_window_manager("openbox")
        product.until_status("Active", 13.0)


@case("desktop.popover.second-start")
def a_second_start_opens_it_and_quit_ends_the_program_with_it_open(program):
    with Desktop(program, name="popover.second-start") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        popover = Popover(desktop, product)
        assert run_to_end(desktop.session, program)[0] == 0
        frame = popover.until_open()
        # Without a panel the popover opens in a corner.
        assert frame[:2] == (1920 - WIDTH - GAP, GAP), f"{frame} is not in the corner"
        assert run_to_end(desktop.session, program)[0] == 0
        product.until_at_rest()
        assert popover.is_open(), "a further start closed it"
        status, _, errors, _ = run_to_end(desktop.session, program, "--quit")
        assert (status, errors) == (0, ""), f"--quit ended with {status}: {errors}"
        assert product.ended() == 0, product.errors()
        assert product.errors() == "", product.errors()
        left = [command for command in desktop.session.processes.alive().values() if str(program) in command]
        assert not left, f"left behind: {left}"
        assert not held_by_others(desktop.server.display), "a grab outlived the program"


@case("desktop.popover.embedded-item")
def asked_from_elsewhere_it_opens_at_the_item_however_long_its_first_opening_takes(program):
    with Desktop(program, name="popover.embedded-item") as desktop:
        desktop.start_window_manager("openbox")
        start_panel(desktop, "trayer")
        product = desktop.launch()
        product.until_status("Active")
        until_icon(desktop, "trayer", ACTIVE)
        popover = Popover(desktop, product)
        for _ in range(2):
            run_to_end(desktop.session, program)
            frame = popover.until_open()
            # At the left end of the upper edge, and not over the panel.
            assert frame.x == GAP and 32 < frame.y <= 32 + GAP, f"{frame} is not at the item"
            popover.close()


@case("desktop.popover.server-killed")
def when_the_server_dies_with_it_open_the_program_ends_by_itself(program):
    with Desktop(program, name="popover.server-killed") as desktop:
        settings = desktop.session.rules({OWN: "center"})
        before = desktop.session.settings_of(settings)
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        popover = Popover(desktop, product)
        run_to_end(desktop.session, program)
        popover.until_open()
        desktop.server.kill()
        status = product.ended()
        assert status == 1, f"ended with {status}: {product.errors()}"
        assert product.errors() != "", "nothing was said"
        assert desktop.session.settings_of(settings) == before, "the settings changed"
        beside = os.listdir(settings.parent)
        assert beside == [settings.name], f"files beside the settings: {beside}"


@case("desktop.popover.environment")
def nothing_writes_the_environment_once_it_has_begun(program):
    # Other threads, which the popover starts, may read it at the same time.
    with Desktop(program, name="popover.environment") as desktop:
        notes = desktop.session.directory / "environment-writes"
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {OWN: "maximize"}, {
            "LD_PRELOAD": os.environ["TESSEL_NOTES_ENVIRONMENT_WRITES"], "TESSEL_ENVIRONMENT_WRITES": str(notes),
            # Variables that must not reach the toolkit, and texts in another language than the locale's.
            "SESSION_MANAGER": "local/nowhere:/nonexistent", "QT_STYLE_OVERRIDE": "windows", "LANGUAGE": "de:fr",
        })

        def writes():
            lines = [line.split() for line in notes.read_text().splitlines()] if notes.exists() else []
            return [line[1:] for line in lines if int(line[0]) == product.process.pid]

        at_the_start = writes()
        assert at_the_start, "the library that takes notes is not in it"
        assert {threads for threads, *_ in at_the_start} == {"1"}, at_the_start
        popover = Popover(desktop, product)
        for _ in range(2):
            popover.ask_to_open()
            popover.until_open()
            popover.type("Tab", "Right", "Tab", "Tab")
            popover.close()
        assert run_to_end(desktop.session, program, "--rule", "org.example.Other", "center")[0] == 0
        keys_and_rules_work(desktop, product)
        assert writes() == at_the_start, writes()
