"""The item in the panel: that it appears, its contents, and that it reappears."""

import signal

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.product import run_to_end
from harness.rect import Rect
from harness.tray import (
    ACTIVE, BADGED, PANELS, PAUSED, WAITING, call, choose, folders_with_icons, menu, registered_items, start_panel,
    until_icon,
)
from harness.waiting import until

from . import case, case_for_each

XFCE = "xfce4-panel"

# The program checks the permission every two seconds, up to ten late.
POLL = 13.0


def until_registered(desktop, seconds=5.0):
    """Waits until the panel knows the item, exactly once."""
    until(lambda: len(registered_items(desktop) or ()) == 1, "the item to be registered", seconds)


@case_for_each("desktop.tray.shown", PANELS)
def the_panel_shows_the_item_while_the_program_runs(program, panel):
    with Desktop(program, name=f"tray.shown.{panel}") as desktop:
        desktop.start_window_manager("openbox")
        start_panel(desktop, panel)
        if PANELS[panel].reads_bus:
            until(lambda: registered_items(desktop) == [], "the panel to be there without items")
        product = desktop.launch()
        product.until_status("Active")
        until_icon(desktop, panel, ACTIVE)
        if PANELS[panel].reads_bus:
            until_registered(desktop)
        product.terminate()
        until_icon(desktop, panel, None)


@case_for_each("desktop.tray.restarted", PANELS)
def a_panel_that_comes_later_or_is_killed_and_started_again_shows_it(program, panel):
    with Desktop(program, name=f"tray.restarted.{panel}") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        for _ in range(3):
            running = start_panel(desktop, panel)
            if PANELS[panel].reads_bus:
                # A second after a panel has appeared on the bus.
                until(lambda: registered_items(desktop) is not None, "the panel to be there")
                until_registered(desktop, 1.0)
            until_icon(desktop, panel, ACTIVE)
            # As in a crash, with all its helpers.
            desktop.session.processes.end(running, signal.SIGKILL)
            if PANELS[panel].reads_bus:
                until(lambda: registered_items(desktop) is None, "the panel to be gone")
            until_icon(desktop, panel, None)
        product.until_at_rest()
        assert product.errors() == "", product.errors()


@case("desktop.tray.pause")
def its_menu_switches_the_program_off_and_on(program):
    with Desktop(program, name="tray.pause") as desktop:
        desktop.start_window_manager("openbox")
        start_panel(desktop, XFCE)
        product = desktop.launch()
        product.until_status("Active")
        until_icon(desktop, XFCE, ACTIVE)
        assert list(menu(desktop)) == ["Active · 6 shortcuts · 0 apps", "Turn off", "Open Tessel", "Quit"]
        choose(desktop, "Turn off")
        product.until_status("Paused")
        until_icon(desktop, XFCE, PAUSED)
        assert list(menu(desktop)) == ["Paused", "Turn on", "Open Tessel", "Quit"]
        assert not held_by_others(desktop.server.display), "keys are held while the program is switched off"
        choose(desktop, "Turn on")
        product.until_status("Active")
        until_icon(desktop, XFCE, ACTIVE)
        assert held_by_others(desktop.server.display) == all_held()
        choose(desktop, "Open Tessel")
        product.until_at_rest()
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop.press(product, "rightHalf")
        # The panel keeps its part of the screen.
        until(lambda: desktop.windows.frame(editor.window).x == 960, "the keys to work still")
        choose(desktop, "Quit")
        assert product.ended() == 0, product.errors()
        until_icon(desktop, XFCE, None)


@case_for_each("desktop.tray.warning", PANELS)
def it_warns_while_no_window_manager_moves_windows(program, panel):
    with Desktop(program, name=f"tray.warning.{panel}") as desktop:
        desktop.start_window_manager("openbox")
        start_panel(desktop, panel)
        product = desktop.launch()
        product.until_status("Active")
        until_icon(desktop, panel, ACTIVE)
        desktop.stop_window_manager()
        product.until_status("Waiting for permission", POLL)
        until_icon(desktop, panel, WAITING)
        desktop.start_window_manager("openbox")
        product.until_status("Active", POLL)
        until_icon(desktop, panel, ACTIVE)


@case_for_each("desktop.tray.badge", PANELS)
def a_reminder_that_is_due_shows_a_dot_from_the_start(program, panel):
    with Desktop(program, name=f"tray.badge.{panel}") as desktop:
        version = run_to_end(desktop.session, program, "--version")[1].split()[1]
        long_ago = 1_000_000_000
        desktop.session.settings(
            f"<key>updateReminderVersion</key><string>{version}</string>"
            f"<key>updateReminderSince</key><real>{long_ago}</real>"
        )
        desktop.start_window_manager("openbox")
        start_panel(desktop, panel)
        product = desktop.launch()
        product.until_status("Active")
        until_icon(desktop, panel, ACTIVE + BADGED)


@case("desktop.tray.by-name")
def a_panel_that_has_the_icons_by_name_gets_no_folder(program):
    with Desktop(program, name="tray.by-name") as desktop:
        desktop.session.environment["XDG_DATA_DIRS"] = folders_with_icons(program)
        desktop.start_window_manager("openbox")
        start_panel(desktop, XFCE)
        product = desktop.launch()
        product.until_status("Active")
        until_icon(desktop, XFCE, ACTIVE)
        (item,) = registered_items(desktop)
        folder = call(desktop, item, "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get",
                      "org.kde.StatusNotifierItem", "IconThemePath")
        assert folder == "(<''>,)", folder


@case("desktop.tray.none")
def without_a_panel_all_else_works(program):
    with Desktop(program, name="tray.none") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, Rect(0, 0, 960, 1080), "frame")
        assert product.errors() == "", product.errors()
