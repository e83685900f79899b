"""The program's own window on sway."""

from harness.applications import APPLICATIONS
from harness.popover import GAP, SHADOW, WIDTH
from harness.sway import SwayDesktop
from harness.sway_ipc import Window
from harness.waiting import until

from . import case


def open_popover(desktop: SwayDesktop, product) -> Window:
    """Opens it by a second start. Returns it once it has the keyboard."""
    status, _, errors, _ = desktop.ask_program()
    assert (status, errors) == (0, ""), f"the second start ended with {status}: {errors}"
    (popover,) = until(
        lambda: [window for window in own_windows(desktop, product) if window.focused], "the popover", 20.0,
        desktop.windows,
    )
    return popover


def own_windows(desktop: SwayDesktop, product) -> list[Window]:
    return [window for window in desktop.windows() if window.process == product.process.pid]


@case("desktop.sway.popover")
def a_second_start_opens_the_popover_and_leaving_closes_it(program):
    with SwayDesktop(program, name="sway.popover") as desktop:
        editor = desktop.open(APPLICATIONS["mousepad"])
        before = desktop.window(editor.number).frame
        product = desktop.launch()

        def stands_in_the_corner(output: int) -> bool:
            area = desktop.work_area(output)
            (shown,) = own_windows(desktop, product)
            # The program draws the shadow itself, so its window is larger than the visible plate.
            x, y = shown.frame.x + SHADOW, shown.frame.y + SHADOW
            corner = (area.x + area.width - WIDTH - GAP, area.y + GAP)
            return shown.floating and shown.border == "none" and (x, y) == corner

        # It opens on the user's output, even without a window there.
        for output, leave in ((1, "by Escape"), (0, "by Escape"), (0, "by another window")):
            desktop.command(f"focus output HEADLESS-{output + 1}")
            open_popover(desktop, product)
            until(lambda: stands_in_the_corner(output), "the popover to be in the corner",
                  saw=lambda: own_windows(desktop, product))
            assert desktop.frame(editor.number) == before, "the layout made room for the popover"
            if leave == "by Escape":
                desktop.keyboard.chord("Escape")
            else:
                desktop.command(f"[con_id={editor.number}] focus")
            until(lambda: not own_windows(desktop, product), f"the popover to close {leave}", saw=desktop.windows)
            if output == 0:
                until(lambda: desktop.window(editor.number).focused, "the editor to have the keyboard")
            # A click that closes it must not open it again.
            product.until_at_rest()
