"""The appearance of the popover: light and dark, scaled with the desktop's fonts, and its use of memory after a day."""

import os
import sys
from functools import partial
from itertools import groupby
from pathlib import Path

from harness import servers
from harness.desktop import Desktop
from harness.popover import BACKGROUND_AT, DARK, GAP, LIGHT, WIDTH, Popover
from harness.product import run_to_end
from harness.rect import Rect
from harness.skipping import require
from harness.waiting import until

from . import case, case_for_each
from .popover import is_within

SETTINGS_PORTAL = str(Path(__file__).resolve().parent.parent / "harness" / "settings_portal.py")
# Limit in KiB for the growth of private dirty memory after so many openings, compared with the first ten.
WARM, MANY, MARGIN = 10, 500, 1024
CARD_COLOUR = (0xFB, 0xFB, 0xFC)
# The card of the shortcuts without its border, in points; between the titles and the keys there are only lines.
CARD_TOP, CARD_BOTTOM = 109, 349


def lines_across(picture, x: int, top: int, bottom: int) -> list[int]:
    """The thickness, in pixels, of the lines that a column of the card crosses."""
    column = [picture.getpixel((x, y)) for y in range(top, bottom)]
    return [len(list(line)) for is_card, line in groupby(column, CARD_COLOUR.__eq__) if not is_card]


@case("desktop.popover.dark")
def it_follows_the_colour_scheme_while_it_is_open(program):
    with Desktop(program, name="popover.dark") as desktop:
        desktop.start_window_manager("openbox")
        scheme = desktop.session.directory / "scheme"
        scheme.write_text("0")
        portal = desktop.session.start([sys.executable, SETTINGS_PORTAL, str(scheme)], "portal")
        product = desktop.launch()
        popover = Popover(desktop, product)
        run_to_end(desktop.session, program)
        popover.until_open()
        popover.until_background(LIGHT)
        for preference, background in (("1", DARK), ("2", LIGHT), ("1", DARK), ("0", LIGHT), ("1", DARK)):
            scheme.write_text(preference)
            popover.until_background(background)
            assert popover.is_open(), "it closed"
        # An ending portal does not change the setting.
        desktop.session.processes.end(portal)
        product.until_at_rest()
        assert popover.background() == DARK, popover.background()


@case_for_each("desktop.popover.scale", (120, 144, 192))
def it_is_as_large_as_the_fonts_of_the_desktop(program, dots):
    screen = Rect(0, 0, 3840, 2160)
    server = partial(servers.virtual, width=screen.width, height=screen.height)
    with Desktop(program, server, f"popover.scale.{dots}") as desktop:
        desktop.start_window_manager("openbox")
        resources = desktop.session.directory / "resources"
        resources.write_text(f"Xft.dpi: {dots}\n")
        desktop.session.run(["xrdb", "-nocpp", "-merge", str(resources)])
        product = desktop.launch()
        scale = dots / 96
        popover = Popover(desktop, product, scale)
        run_to_end(desktop.session, program)
        frame = popover.until_open()
        assert frame.width == round(WIDTH * scale), f"{frame.width} wide"
        assert is_within(frame, screen), f"{frame} is not on the screen"
        # Drawn in that size, not stretched: its background reaches its edges.
        picture = popover.picture()
        far = (picture.width - round(7 * scale), picture.height - round(30 * scale))
        assert picture.getpixel(far) == LIGHT, picture.getpixel(far)
        # All lines between the rows have the same thickness, at any alignment to pixels.
        dividers = lines_across(picture, round(215 * scale), round(CARD_TOP * scale), round(CARD_BOTTOM * scale))
        assert dividers == [round(scale)] * 5, f"{dividers} pixels thick"


@case("desktop.popover.fonts-change")
def it_grows_and_shrinks_with_the_fonts_while_it_is_open(program):
    require("xfsettingsd", "xfce4-settings")
    server = partial(servers.virtual, width=3840, height=2160)
    with Desktop(program, server, "popover.fonts-change") as desktop:
        desktop.start_window_manager("openbox")
        desktop.session.start(["xfsettingsd", "--sm-client-disable", "--no-daemon"], "xfsettingsd")
        dots = ["xfconf-query", "--channel", "xsettings", "--property", "/Xft/DPI", "--create", "--type", "int", "--set"]
        desktop.session.run([*dots, "96"])
        until(lambda: b"Xft/DPI" in desktop.windows.selection_property("_XSETTINGS_S0", "_XSETTINGS_SETTINGS"),
              "the settings to be sent")
        product = desktop.launch()
        popover = Popover(desktop, product)
        run_to_end(desktop.session, program)
        assert popover.until_open().width == WIDTH
        plain = popover.picture()
        for number in (144, 96, 192, 96):
            desktop.session.run([*dots, str(number)])
            popover.scale = number / 96
            wide = round(WIDTH * popover.scale)
            until(lambda: (frame := popover.frame()) and frame.width == wide, f"a width of {wide}", saw=popover.frame)
            popover.until_open()
            # Drawn in that size, not stretched: its background reaches its edges.
            picture = popover.picture()
            far = (picture.width - round(7 * popover.scale), picture.height - round(30 * popover.scale))
            assert picture.getpixel(far) == LIGHT, picture.getpixel(far)
            # Its upper right corner has not moved.
            frame = popover.frame()
            assert (frame.x + frame.width, frame.y) == (3840 - GAP, GAP), frame
        until(lambda: popover.picture() == plain, "the popover to be what it was")


@case("desktop.popover.opaque")
def where_nothing_shines_through_it_is_all_there_at_once(program):
    with Desktop(program, name="popover.opaque") as desktop:
        desktop.start_window_manager("openbox")
        backdrop = (0x2E, 0x6B, 0x57)
        desktop.windows.paint_background(backdrop[0] << 16 | backdrop[1] << 8 | backdrop[2])
        product = desktop.launch()
        popover = Popover(desktop, product)
        # The place where it will open: there is no panel.
        place = (1920 - GAP - WIDTH + BACKGROUND_AT[0], GAP + BACKGROUND_AT[1])
        for number in range(8):
            until(lambda: desktop.windows.pixel(*place) == backdrop, "the screen to be empty")
            popover.ask_to_open()
            seen = set()

            def is_drawn() -> bool:
                seen.add(desktop.windows.pixel(*place))
                return LIGHT in seen

            until(is_drawn, "the popover to be drawn", saw=lambda: seen)
            assert seen <= {backdrop, LIGHT}, f"opening {number} went through {seen - {backdrop, LIGHT}}"
            popover.until_open()
            popover.close()


def private_dirty(process_id: int) -> int:
    """In KiB."""
    rollup = Path(f"/proc/{process_id}/smaps_rollup").read_text().splitlines()
    return int(next(line.split()[1] for line in rollup if line.startswith("Private_Dirty:")))


@case("desktop.popover.five-hundred")
def opened_and_closed_all_day_it_takes_no_more_memory(program):
    with Desktop(program, name="popover.five-hundred") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        popover = Popover(desktop, product)
        process_id = product.process.pid
        figures = {}
        for number in range(1, MANY + 1):
            popover.ask_to_open()
            until(popover.has_keyboard, f"opening {number}", 10.0)
            popover.close()
            if number in (WARM, MANY):
                figures[number] = (private_dirty(process_id), len(os.listdir(f"/proc/{process_id}/fd")))
        print(f"private dirty KiB and descriptors by openings: {figures}")
        assert figures[MANY][0] <= figures[WARM][0] + MARGIN, f"memory grows: {figures}"
        assert figures[MANY][1] <= figures[WARM][1], f"descriptors grow: {figures}"
        assert product.errors() == "", product.errors()
