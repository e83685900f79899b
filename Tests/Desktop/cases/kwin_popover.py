"""KWin on Wayland: the program's own window is at its place, above all others and out of all lists."""

from harness.kwin import SCREENS, KWinDesktop, SeenWindow
from harness.popover import GAP, SHADOW, WIDTH
from harness.product import run_to_end
from harness.waiting import until, until_equal

from . import case
from .kwin_actions import open_application

# Reports the position of the program's window at the very moment when KWin adds it, after all earlier scripts.
WATCH = """
const six = typeof workspace.windowList === "function";
(six ? workspace.windowAdded : workspace.clientAdded).connect((window) => {
    if (window.pid === %d) {
        print("TAKEN IN AT", Math.round(window.frameGeometry.x), Math.round(window.frameGeometry.y));
    }
});
"""


def own_window(desktop: KWinDesktop, product) -> SeenWindow | None:
    return next(iter(desktop.eyes.of_process(product.process.pid)), None)


@case("desktop.kwin.popover")
def a_second_start_opens_it_in_its_place_and_it_closes_when_it_is_left(program):
    with KWinDesktop(program) as desktop:
        editor = open_application(desktop, "mousepad")
        product = desktop.launch()
        script = desktop.session.directory / "watch.js"
        script.write_text(WATCH % product.process.pid)
        desktop.eyes.run(script, "watch")
        for way in ("Escape", "another window"):
            status, _, errors, _ = run_to_end(desktop.session, program)
            assert status == 0, errors
            until(lambda: own_window(desktop, product), f"the window, to be closed by {way}", 20.0)
            until(lambda: own_window(desktop, product).is_active, "it to have the keyboard")
            # It has received the event, too.
            product.until_at_rest()
            shown = own_window(desktop, product)
            plate = shown.frame.grown(-SHADOW, -SHADOW, -SHADOW, -SHADOW)
            assert plate.width == WIDTH, f"{plate} wide"
            right = SCREENS[0].x + SCREENS[0].width
            assert (plate.x + plate.width, plate.y) == (right - GAP, GAP), f"{plate} is not in the corner"
            assert shown.is_above and shown.is_skipped and shown.is_everywhere and shown.is_bare, f"{shown}"
            log = (desktop.session.logs / "kwin.log").read_text()
            places = [line.split()[-2:] for line in log.splitlines() if "TAKEN IN AT" in line]
            assert places and places[-1] == [str(shown.frame.x), str(shown.frame.y)], f"{places}, then {shown.frame}"
            if way == "Escape":
                desktop.keyboard.chord("Escape")
            else:
                desktop.eyes.activate(editor.window)
            until(lambda: own_window(desktop, product) is None, f"it to close by {way}")
            until_equal(desktop.eyes.active, editor.window, "the window that has the keyboard")
            desktop.press(product, "rightHalf")
            until(lambda: desktop.eyes.frame(editor.window).x == 800, "the keys to work afterwards")
