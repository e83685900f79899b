"""Windows that are maximized, tiled by their window manager, or fullscreen when the key is pressed."""

import impossible
from harness import freed_keys
from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.settling import settles_on
from harness.waiting import Expired, until
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


class Shadow:
    """The shadow that an application draws around itself; the application changes it late, after the window's state.

    Created while the window is active and floats.
    """

    def __init__(self, desktop: Desktop, one):
        self.windows = desktop.windows
        self.window = one.window
        self.floating = self._now()

    def _now(self):
        return self.windows.extents(self.window, "_GTK_FRAME_EXTENTS")

    def until_floating(self) -> None:
        until(lambda: self._now() == self.floating, f"the shadow to be {self.floating}", saw=self._now)
        self.windows.fence()

    def until_attached(self) -> None:
        """Waits until it is that of a window which fills the screen's height; no other state changes the shadow in
        every application."""
        if any(self.floating) and "MAXIMIZED_VERT" in self.windows.states(self.window):
            until(lambda: self._now() != self.floating, "the shadow to change", saw=self._now)
            self.windows.fence()


@case_for_each("desktop.maximized", WINDOW_MANAGERS)
def a_maximized_window_is_released_and_placed(program, manager):
    with Desktop(program, name=f"maximized.{manager}") as desktop:
        desktop.start_window_manager(manager)
        running = open_all(desktop, "mousepad", "mousepad-csd", "xterm")
        product = desktop.launch()
        visible = desktop.visible_frame()
        windows = desktop.windows
        failures = []
        for one in running:
            windows.activate(one.window)
            shadow = Shadow(desktop, one)
            for states, actions in (
                (BOTH, ("leftHalf", "rightHalf", "almostMaximize")),
                (("MAXIMIZED_VERT",), ("rightHalf", "almostMaximize")),
                (("MAXIMIZED_HORZ",), ("leftHalf",)),
            ):
                for action in actions:
                    windows.place(one.window, NATURAL)
                    natural = windows.frame(one.window)
                    wanted = expected(
                        action, natural, visible, settles_on(windows, one.window, one.application, desktop.manager)
                    )
                    windows.change_state(one.window, ADD, *states)
                    shadow.until_attached()
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
                    shadow.until_floating()
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


# The key by which each window manager tiles a window to the left half itself, if it has one.
NATIVE_TILING = {
    "kwin_x11": ("Super", "Left"),
    "mutter": ("Super", "Left"),
    "muffin": ("Super", "Left"),
    "metacity": ("Super", "Left"),
    "marco": ("Super", "Left"),
    "xfwm4": ("Super", "KeypadLeft"),
}


def tile_left_natively(desktop: Desktop, one, wanted: Rect) -> None:
    """Moves the window to NATURAL and then presses the window manager's own key, from no other place."""
    windows, key = desktop.windows, NATIVE_TILING[desktop.manager.name]
    windows.place(one.window, NATURAL)
    if windows.frame(one.window) == wanted:
        # Still tiled, and not to be moved meanwhile: the same key releases it.
        desktop.keyboard.chord(*key)
        until(lambda: windows.frame(one.window) != wanted, f"{one.application.name} to be let go by its own key")
        windows.place(one.window, NATURAL)
    # Twice if the window manager still takes a placed window for tiled, and releases it first. On a busy machine xfwm4
    # has ignored one of the two.
    for _ in range(4):
        desktop.keyboard.chord(*key)
        # Handled before the next press, which would release the window again.
        windows.fence()
        try:
            desktop.holds_frame(one.window, wanted, f"frame after {desktop.manager.name}'s own key", 1.0)
            return
        except Expired:
            continue
    raise Expired(f"{desktop.manager.name} did not tile {one.application.name}")


LEFT, RIGHT, ALMOST = Rect(0, 0, 960, 1080), Rect(960, 0, 960, 1080), Rect(96, 54, 1728, 972)


@case_for_each("desktop.tiled", NATIVE_TILING)
def a_window_tiled_by_the_window_manager_is_released_and_placed(program, manager):
    with Desktop(program, name=f"tiled.{manager}") as desktop:
        if manager == "marco":
            # The only one without such a key in its default configuration.
            freed_keys.add_settings(
                desktop.session, "org/mate/marco/window-keybindings", tile_to_side_w="'<Mod4>Left'"
            )
        desktop.start_window_manager(manager)
        running = open_all(desktop, "mousepad", "mousepad-csd")
        product = desktop.launch()
        windows = desktop.windows
        for one in running:
            windows.activate(one.window)
            shadow = Shadow(desktop, one)
            # A window that is in place already needs no release, so that comes last.
            for action, wanted in (("rightHalf", RIGHT), ("almostMaximize", ALMOST), ("leftHalf", LEFT)):
                tile_left_natively(desktop, one, LEFT)
                shadow.until_attached()
                wanted = LEFT if manager in impossible.TILED else wanted
                desktop.press(product, action)
                desktop.holds_frame(one.window, wanted, f"frame of {one.application.name} after {action}")
                desktop.press(product, action)
                desktop.holds_frame(one.window, wanted, f"frame of {one.application.name} after a repeat of {action}")
