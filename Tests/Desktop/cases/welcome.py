"""The popover opens by itself where its user has to know of something, and once for each."""

import plistlib
import time

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import held_by_others
from harness.popover import Popover
from harness.rect import Rect
from harness.waiting import until

from . import case

# The program waits up to half a minute for what may come late; a machine may be busy.
LATE = 90.0


def opened_for(desktop: Desktop) -> dict[str, bool]:
    settings = desktop.session.home / ".config/tessel/preferences.plist"
    return plistlib.loads(settings.read_bytes()).get("openedFor", {}) if settings.exists() else {}


def stays_closed_for(seconds: float, desktop: Desktop, popover: Popover) -> None:
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        assert not popover.is_open(), "the popover opened"
        desktop.windows.fence()


@case("desktop.welcome.first-start")
def the_first_start_shows_itself_and_the_second_does_not(program):
    with Desktop(program, name="welcome.first-start") as desktop:
        desktop.session.be_new()
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        began = time.monotonic()
        product = desktop.launch()
        popover = Popover(desktop, product)
        popover.until_open()
        taken = time.monotonic() - began
        assert opened_for(desktop) == {"start": True}, opened_for(desktop)
        popover.close()
        until(lambda: desktop.windows.active() == editor.window, "the editor to be active again")
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, Rect(0, 0, 960, 1080), "the editor's frame")
        product.terminate()

        product = desktop.launch()
        product.until_status("Active")
        stays_closed_for(3 * taken, desktop, Popover(desktop, product))
        assert product.errors() == "", product.errors()


@case("desktop.welcome.taken")
def a_start_that_finds_shortcuts_taken_shows_them_once(program):
    with Desktop(program, name="welcome.taken") as desktop:
        desktop.session.be_new()
        desktop.session.settings("<key>openedFor</key><dict><key>start</key><true/></dict>")
        # It holds some of our keys for itself.
        desktop.start_window_manager("openbox", keys_free=False)
        assert held_by_others(desktop.server.display), "openbox holds none of the keys"
        product = desktop.launch()
        popover = Popover(desktop, product)
        popover.until_open(LATE)
        assert opened_for(desktop) == {"start": True, "shortcuts": True}, opened_for(desktop)
        popover.close()
        assert product.errors() == "", product.errors()
