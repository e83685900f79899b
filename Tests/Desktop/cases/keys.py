"""Shortcuts with lock keys, other layouts, and a key that is held down."""

from Xlib import X

from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.waiting import throughout, until

from . import case

NATURAL = Rect(311, 173, 762, 503)
GROUP_MASK = 0x6000


def every_action_works(desktop: Desktop, product, window: int, when: str) -> None:
    for action in ACTIONS:
        desktop.windows.place(window, NATURAL)
        before = desktop.windows.frame(window)
        desktop.press(product, action)
        wanted = expected(action, before, desktop.visible_frame(), lambda size: size)
        desktop.holds_frame(window, wanted, f"frame after {action} {when}")


@case("desktop.keys.locks")
def lock_keys_change_nothing(program):
    with Desktop(program, name="keys.locks") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        for caps in (False, True):
            for num in (False, True):
                desktop.keyboard.lock("CapsLock", caps)
                desktop.keyboard.lock("NumLock", num)
                every_action_works(desktop, product, editor.window, f"with caps lock {caps} and num lock {num}")


@case("desktop.keys.locked-before-start")
def lock_keys_that_were_on_at_the_start_change_nothing(program):
    with Desktop(program, name="keys.locked-before-start") as desktop:
        desktop.keyboard.lock("CapsLock", True)
        desktop.keyboard.lock("NumLock", True)
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        every_action_works(desktop, product, editor.window, "with both locks on")
        desktop.keyboard.lock("CapsLock", False)
        desktop.keyboard.lock("NumLock", False)
        every_action_works(desktop, product, editor.window, "with both locks off again")


@case("desktop.keys.layouts")
def shortcuts_are_places_in_every_layout(program):
    with Desktop(program, name="keys.layouts") as desktop:
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        for layout in ("us", "fr", "de", "ru", "dvorak", "gr", "us"):
            desktop.session.run(["setxkbmap", layout])
            # The change reaches the program as an event, which it handles before any later press.
            every_action_works(desktop, product, editor.window, f"in layout {layout}, switched to while running")
        for layout in ("ru", "fr"):
            product.terminate()
            desktop.session.run(["setxkbmap", layout])
            product = desktop.launch()
            every_action_works(desktop, product, editor.window, f"in layout {layout}, there at the start")


@case("desktop.keys.second-layout")
def shortcuts_work_while_the_second_of_two_layouts_is_chosen(program):
    with Desktop(program, name="keys.second-layout") as desktop:
        desktop.session.run(["setxkbmap", "us,ru", "-option", "grp:caps_toggle"])
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        every_action_works(desktop, product, editor.window, "in the first layout")
        desktop.keyboard.chord("CapsLock")
        assert desktop.keyboard.modifiers() & GROUP_MASK, "the second layout is not chosen"
        every_action_works(desktop, product, editor.window, "in the second layout")


@case("desktop.keys.held")
def a_key_held_for_two_seconds_is_one_press(program):
    with Desktop(program, name="keys.held") as desktop:
        desktop.start_window_manager("openbox")
        desktop.session.run(["xset", "r", "rate", "150", "40"])
        window = desktop.open(own_window("--place", "300", "200", "500", "400")).window
        # Otherwise the test would check nothing.
        until_repeated(desktop, window, 10)
        product = desktop.launch()
        desktop.keyboard.hold("Control", "Alt", "Left")
        left = Rect(0, 0, 960, 1080)
        desktop.holds_frame(window, left, "frame after the press")
        # The program still checks the result of its placement.
        product.until_at_rest()
        # Wherever the window moves while the key is held, it stays there.
        away = Rect(700, 300, 640, 480)
        desktop.windows.place(window, away)
        hold_and_expect(desktop, window, away, 2.0)
        desktop.keyboard.release("Control", "Alt", "Left")
        product.until_at_rest()
        desktop.windows.fence()
        assert desktop.windows.frame(window) == away, "the release moved the window"
        desktop.press(product, "leftHalf")
        desktop.holds_frame(window, left, "frame after the next press")


def until_repeated(desktop: Desktop, window: int, times: int) -> None:
    """Holds a key over the focused window until the server has repeated it that often."""
    connection = desktop.keyboard.connection
    target = connection.create_resource_object("window", window)
    target.change_attributes(event_mask=X.KeyPressMask)
    desktop.keyboard.hold("Left")
    pressed = 0

    def is_repeated() -> bool:
        nonlocal pressed
        while connection.pending_events():
            pressed += connection.next_event().type == X.KeyPress
        return pressed > times

    until(is_repeated, "the server to repeat a key", saw=lambda: pressed)
    desktop.keyboard.release("Left")
    target.change_attributes(event_mask=0)


def hold_and_expect(desktop: Desktop, window: int, frame: Rect, seconds: float) -> None:
    throughout(seconds, lambda: desktop.windows.frame(window) == frame, "left alone while the key was held",
               lambda: desktop.windows.frame(window))
