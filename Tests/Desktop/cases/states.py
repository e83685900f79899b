"""Windows that are maximized, tiled by their window manager, or fullscreen when the key is pressed."""

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.settling import settles_on
from harness.window_managers import WINDOW_MANAGERS
from harness.windows import ADD, REMOVE

from . import case_for_each

NATURAL = Rect(311, 173, 762, 503)
BOTH = ("MAXIMIZED_VERT", "MAXIMIZED_HORZ")


def open_all(desktop: Desktop, *names: str):
    running = [desktop.start(APPLICATIONS[name]) for name in names]
    for one in running:
        desktop.wait_for(one)
    return running


def let_shadow_follow(desktop: Desktop, one) -> None:
    """An application that draws its own shadow takes it away when it fills the screen's height, in its own time."""
    if one.application.draws_shadow and desktop.manager.composites:
        shadow = lambda: desktop.windows.extents(one.window, "_GTK_FRAME_EXTENTS")
        from harness.waiting import until

        until(lambda: shadow()[3] < 20, "the shadow to go", saw=shadow)
        desktop.windows.fence()


@case_for_each("desktop.maximized", WINDOW_MANAGERS)
def a_maximized_window_is_released_and_placed(program, manager):
    with Desktop(program, name=f"maximized.{manager}") as desktop:
        desktop.start_window_manager(manager)
        running = open_all(desktop, "mousepad", "mousepad-csd", "featherpad", "xterm")
        product = desktop.launch()
        visible = desktop.visible_frame()
        windows = desktop.windows
        failures = []
        for one in running:
            windows.activate(one.window)
            for states in (BOTH, ("MAXIMIZED_VERT",), ("MAXIMIZED_HORZ",)):
                for action in ("leftHalf", "rightHalf", "almostMaximize"):
                    windows.place(one.window, NATURAL)
                    natural = windows.frame(one.window)
                    wanted = expected(
                        action, natural, visible, settles_on(windows, one.window, one.application, desktop.manager)
                    )
                    windows.change_state(one.window, ADD, *states)
                    if "MAXIMIZED_VERT" in states:
                        let_shadow_follow(desktop, one)
                    try:
                        desktop.press(product, action)
                        desktop.holds_frame(one.window, wanted, "frame")
                        left = windows.states(one.window) & set(BOTH)
                        assert not left, f"still {left}"
                        desktop.press(product, action)
                        desktop.holds_frame(one.window, wanted, "frame after a repeat")
                    except AssertionError as failure:
                        failures.append(f"{one.application.name}, {'+'.join(states)}, {action}: {failure}")
                    if windows.states(one.window) & set(states):
                        windows.change_state(one.window, REMOVE, *states)
        assert not failures, "\n".join(failures)


@case_for_each("desktop.fullscreen", WINDOW_MANAGERS)
def a_fullscreen_window_is_left_alone(program, manager):
    with Desktop(program, name=f"fullscreen.{manager}") as desktop:
        desktop.start_window_manager(manager)
        (one,) = open_all(desktop, "mousepad")
        windows = desktop.windows
        windows.activate(one.window)
        windows.place(one.window, NATURAL)
        natural = windows.frame(one.window)
        product = desktop.launch()
        windows.change_state(one.window, ADD, "FULLSCREEN")
        full = Rect(0, 0, 1920, 1080)
        desktop.holds_frame(one.window, full, "fullscreen frame")
        for action in ACTIONS:
            desktop.press(product, action)
            assert windows.frame(one.window) == full, f"{action} moved it to {windows.frame(one.window)}"
            assert "FULLSCREEN" in windows.states(one.window), f"{action} ended fullscreen"
        windows.change_state(one.window, REMOVE, "FULLSCREEN")
        desktop.holds_frame(one.window, natural, "frame after fullscreen")


# The key by which each window manager puts a window on the left half itself, where it has one.
NATIVE_TILING = {
    "kwin_x11": ("Super", "Left"),
    "mutter": ("Super", "Left"),
    "metacity": ("Super", "Left"),
    "xfwm4": ("Super", "KeypadLeft"),
}


@case_for_each("desktop.tiled", NATIVE_TILING)
def a_window_tiled_by_the_window_manager_is_released_and_placed(program, manager):
    with Desktop(program, name=f"tiled.{manager}") as desktop:
        desktop.start_window_manager(manager)
        running = open_all(desktop, "mousepad", "mousepad-csd")
        product = desktop.launch()
        windows = desktop.windows
        left = Rect(0, 0, 960, 1080)
        right = Rect(960, 0, 960, 1080)
        for one in running:
            windows.activate(one.window)
            for action, wanted in (("rightHalf", right), ("leftHalf", left), ("almostMaximize", Rect(96, 54, 1728, 972))):
                windows.place(one.window, NATURAL)
                desktop.keyboard.chord(*NATIVE_TILING[manager])
                desktop.holds_frame(one.window, left, f"frame of {one.application.name} after {manager}'s own key")
                let_shadow_follow(desktop, one)
                desktop.press(product, action)
                desktop.holds_frame(one.window, wanted, f"frame of {one.application.name} after {action}")
                desktop.press(product, action)
                desktop.holds_frame(one.window, wanted, f"frame of {one.application.name} after a repeat of {action}")
