"""i3 and the program together: keys that the user has bound, restarts, replacements, ends, an i3 that hangs."""

import json
import signal

from harness.applications import APPLICATIONS
from harness.grabs import all_held, held_by_others
from harness.holders import until_holders
from harness.i3 import I3Desktop
from harness.oracle import ACTIONS, expected
from harness.popover import GAP, Popover
from harness.product import run_to_end
from harness.rect import Rect
from harness.waiting import until

from . import case
from .hanging import until_free
from .window_manager_changes import POLL, taken

NATURAL = Rect(311, 173, 762, 503)
BOUND = "bindsym Control+Mod1+Left mark left\nbindsym Mod1+Ctrl+c mark c\n"


def works(desktop: I3Desktop, product, window: int, when: str, actions=ACTIONS) -> None:
    """Presses all shortcuts, each time on a window in the layout."""
    for action in actions:
        desktop.tile(window)
        before = desktop.windows.frame(window)
        desktop.press(product, action)
        wanted = expected(action, before, desktop.work_area(), lambda size: size)
        desktop.holds_frame(window, wanted, f"frame after {action} {when}")
        assert desktop.node(window).floating, f"{action} {when} left the window in the layout"


def backend(desktop: I3Desktop, program) -> str:
    status, output, errors, _ = run_to_end(desktop.session, program, "--status", "--json")
    assert status == 0, errors
    return json.loads(output)["backend"]


@case("desktop.i3.taken")
def keys_that_the_user_has_bound_stay_the_users_and_the_others_work(program):
    with I3Desktop(program, BOUND, "i3.taken") as desktop:
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        held = ("leftHalf", "center")
        product.until_status(taken(held))
        until_holders(desktop.session, program, {
            "leftHalf": (f"i3, ~/.config/i3/config:{desktop.line_of('mark left')}", "mark left"),
            "center": (f"i3, ~/.config/i3/config:{desktop.line_of('mark c')}", "mark c"),
        })
        works(desktop, product, window, "beside the user's", [action for action in ACTIONS if action not in held])
        desktop.tile(window)
        frame = desktop.windows.frame(window)
        for action, mark in (("leftHalf", "left"), ("center", "c")):
            desktop.press(product, action)
            until(lambda mark=mark: mark in desktop.marks(), f"the user's own binding, {mark}")
        assert desktop.windows.frame(window) == frame, "a key of the user's moved the window"
        # A shortcut that the user frees is available to the next client.
        product.terminate()
        desktop.configure("")
        desktop.reload()
        product = desktop.launch()
        product.until_status("Active")
        works(desktop, product, window, "after the keys were given back")


@case("desktop.i3.restart")
def a_restart_in_place_and_a_reload_are_survived(program):
    with I3Desktop(program, name="i3.restart") as desktop:
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        product.until_status("Active")
        works(desktop, product, window, "before")
        desktop.restart_in_place()
        works(desktop, product, window, "after a restart in place")
        desktop.reload()
        works(desktop, product, window, "after a reload")
        product.until_status("Active")
        assert held_by_others(desktop.server.display) == all_held()


@case("desktop.i3.gone")
def i3_that_ends_and_comes_back_is_found(program):
    with I3Desktop(program, name="i3.gone") as desktop:
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        works(desktop, product, editor.window, "before", ("maximize",))
        desktop.stop_window_manager(signal.SIGKILL)
        product.until_status("Waiting for permission", POLL)
        # It listens at another socket now.
        desktop.start_i3()
        desktop.adopt(editor)
        product.until_status("Active", POLL)
        works(desktop, product, editor.window, "after i3 came back")


@case("desktop.i3.replaced")
def another_window_manager_and_i3_take_over_from_each_other(program):
    with I3Desktop(program, name="i3.replaced") as desktop:
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        assert backend(desktop, program) == "i3"
        works(desktop, product, editor.window, "under i3", ("maximize",))
        desktop.disconnect()
        desktop.replace_window_manager("openbox")
        desktop.adopt(editor)
        product.until_status("Active", POLL)
        until(lambda: backend(desktop, program) == "X11", "the program to notice", POLL)
        desktop.press(product, "maximize")
        screen = desktop.windows.root.get_geometry()
        desktop.holds_frame(editor.window, Rect(0, 0, screen.width, screen.height), "maximized under openbox")
        desktop.start_i3_in_place_of_another()
        desktop.adopt(editor)
        until(lambda: backend(desktop, program) == "i3", "the program to notice", POLL)
        product.until_status("Active", POLL)
        works(desktop, product, editor.window, "after i3 took over")


@case("desktop.i3.exit")
def the_program_ends_and_leaves_nothing_behind(program):
    with I3Desktop(program, name="i3.exit") as desktop:
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        product.until_status("Active")
        desktop.press(product, "maximize")
        frame = desktop.windows.frame(window)
        assert desktop.node(window).floating
        product.terminate()
        assert not held_by_others(desktop.server.display), "keys are held by nobody's program"
        desktop.place(window, NATURAL)
        for action in ACTIONS:
            desktop.keyboard.press(action)
        desktop.windows.fence()
        assert desktop.windows.frame(window) == NATURAL != frame


@case("desktop.i3.hangs")
def an_i3_that_hangs_does_not_hang_the_program(program):
    with I3Desktop(program, name="i3.hangs") as desktop:
        window = desktop.open(APPLICATIONS["mousepad"]).window
        product = desktop.launch()
        product.until_status("Active")
        with desktop.window_manager_hangs():
            for action in ("leftHalf", "rightHalf", "center"):
                desktop.keyboard.press(action)
                until_free(product, f"{action} under a hung i3")
        desktop.windows.fence()
        works(desktop, product, window, "once i3 answers again")
        product.until_status("Active")


@case("desktop.i3.popover")
def the_popover_opens_below_the_bar_and_changes_no_layout(program):
    with I3Desktop(program, name="i3.popover") as desktop:
        windows = [desktop.open(APPLICATIONS[name]).window for name in ("featherpad", "mousepad")]
        product = desktop.launch()
        product.until_status("Active")
        until(desktop.bar_items, "the item in i3's own bar")
        before = [desktop.windows.frame(window) for window in windows]
        run_to_end(desktop.session, program, seconds=20.0)
        frame = Popover(desktop, product).until_open(20.0)
        assert frame.y - desktop.bar_height() in range(GAP + 5), f"{frame} is not below the bar"
        assert [desktop.windows.frame(window) for window in windows] == before, "the layout made room for the popover"
