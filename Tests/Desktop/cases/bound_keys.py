"""Keys that a user binds to the program's command, as docs/keys.md describes, on each of its desktops."""

from harness import keys_page
from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.gnome import Gnome
from harness.i3 import I3Desktop
from harness.kwin import SCREENS, KWinDesktop
from harness.placements import part
from harness.rect import Rect
from harness.skipping import require
from harness.sway import SwayDesktop
from harness.system_bus import start_system_bus
from harness.waiting import until, until_equal
from harness.wayfire import WayfireDesktop
from harness.window_managers import WINDOW_MANAGERS

from . import case
from .shells import open_application

NATURAL = Rect(211, 173, 662, 503)
# This daemon grabs the keys of GNOME's settings.
MEDIA_KEYS = "/usr/libexec/gsd-media-keys"


def press_until_placed(press, frame, area: Rect) -> None:
    """Presses the key, again if nothing grabs it yet, until the window has the frame that the page describes."""
    wanted = part("top-left", area)

    def is_placed() -> bool:
        press()
        try:
            until_equal(frame, wanted, "the window in its corner", 1.0)
        except AssertionError:
            return False
        return True

    until(is_placed, "the key to place the window", 20.0, frame)


def follow_page(desktop: Desktop, heading: str) -> None:
    desktop.session.run(["sh", "-euc", keys_page.block(heading, desktop.program)])


def press_on_x11(desktop: Desktop, window: int, area: Rect | None = None) -> None:
    desktop.launch().until_status("Active")
    desktop.windows.place(window, NATURAL)
    press_until_in_corner(desktop, window, area)


def press_until_in_corner(desktop: Desktop, window: int, area: Rect | None = None) -> None:
    press_until_placed(
        lambda: desktop.keyboard.chord(*keys_page.CHORD), lambda: desktop.windows.frame(window),
        area or desktop.visible_frame(),
    )


def press_in_layout(desktop: I3Desktop | SwayDesktop, window: int, frame) -> None:
    """Presses on a desktop that has bound the keys in its configuration."""
    desktop.launch().until_status("Active")
    desktop.place(window, NATURAL)
    press_until_placed(lambda: desktop.keyboard.chord(*keys_page.CHORD), frame, desktop.work_area())


@case("desktop.bound-keys.xfce")
def a_key_of_xfce(program):
    with Desktop(program, name="bound-keys.xfce") as desktop:
        require("xfsettingsd", "xfce4-settings")
        desktop.start_window_manager("xfwm4")
        settings = ["xfsettingsd", "--sm-client-disable"]
        present = desktop.session.start(settings, "xfsettingsd")
        window = desktop.open(APPLICATIONS["mousepad"]).window
        follow_page(desktop, "Xfce")
        press_on_x11(desktop, window)
        # Simulates the next login.
        desktop.session.processes.end(present)
        desktop.session.start(settings, "xfsettingsd")
        desktop.windows.place(window, NATURAL)
        press_until_in_corner(desktop, window)


@case("desktop.bound-keys.mate")
def a_key_of_mate(program):
    with Desktop(program, name="bound-keys.mate") as desktop:
        desktop.start_window_manager("marco")
        window = desktop.open(APPLICATIONS["mousepad"]).window
        follow_page(desktop, "MATE")
        press_on_x11(desktop, window)


@case("desktop.bound-keys.cinnamon")
def a_key_of_cinnamon(program):
    require("cinnamon", "cinnamon")
    with Desktop(program, name="bound-keys.cinnamon") as desktop:
        # Cinnamon includes muffin and a panel of its own.
        desktop.manager = WINDOW_MANAGERS["muffin"]
        desktop.manager.free_keys(desktop.session)
        # Cinnamon 6.6 asks it for the keyboard's layout, and does not start without it.
        start_system_bus(desktop.session)
        desktop.manager_process = desktop.session.start(["cinnamon"], "cinnamon")
        desktop.until_settled()
        window = desktop.open(APPLICATIONS["mousepad"]).window
        follow_page(desktop, "Cinnamon")
        press_on_x11(desktop, window, desktop.windows.work_area())


@case("desktop.bound-keys.i3")
def a_key_of_i3(program):
    line = keys_page.block("sway and i3", program)
    with I3Desktop(program, line, "bound-keys.i3") as desktop:
        window = desktop.open(APPLICATIONS["mousepad"]).window
        press_in_layout(desktop, window, lambda: desktop.windows.frame(window))


@case("desktop.bound-keys.sway")
def a_key_of_sway(program):
    line = keys_page.block("sway and i3", program)
    with SwayDesktop(program, line, "bound-keys.sway") as desktop:
        number = desktop.open(APPLICATIONS["mousepad"]).number
        press_in_layout(desktop, number, lambda: desktop.frame(number))


@case("desktop.bound-keys.wayfire")
def a_key_of_wayfire(program):
    with WayfireDesktop(program, keys_page.block("Wayfire", program), "bound-keys.wayfire") as desktop:
        number = desktop.open(APPLICATIONS["mousepad"]).number
        desktop.launch().until_status("Active")
        desktop.place(number, NATURAL)
        press_until_placed(
            lambda: desktop.keyboard.chord(*keys_page.CHORD), lambda: desktop.frame(number), desktop.work_area()
        )


@case("desktop.bound-keys.gnome")
def a_key_of_gnome(program):
    with Gnome(program, "bound-keys.gnome") as desktop:
        require(MEDIA_KEYS, "gnome-settings-daemon")
        desktop.session.start([MEDIA_KEYS], "gsd-media-keys", desktop.x11_environment())
        _, window = open_application(desktop, "mousepad")
        follow_page(desktop, "GNOME")
        desktop.launch().until_status("Active")
        desktop.place(window, NATURAL)
        press_until_placed(
            lambda: desktop.hands.chord(*keys_page.CHORD), lambda: desktop.frame(window), desktop.work_areas()[0]
        )


@case("desktop.bound-keys.plasma")
def a_key_of_plasma(program):
    with KWinDesktop(program, has_keyboard=False) as desktop:
        follow_page(desktop, "Plasma")
        # Simulates the next login.
        desktop.stop_kwin()
        desktop.start_kwin()
        desktop.renew_keyboard()
        client = desktop.open(*APPLICATIONS["mousepad"].command, package="mousepad")
        desktop.launch()
        desktop.eyes.place(client.window, NATURAL)
        press_until_placed(
            lambda: desktop.keyboard.chord(*keys_page.CHORD), lambda: desktop.eyes.frame(client.window), SCREENS[0]
        )
