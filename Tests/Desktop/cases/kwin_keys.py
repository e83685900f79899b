"""KWin on Wayland: the shortcuts in KGlobalAccel, other holders, and starts and ends of the program."""

import signal
import time

from harness.holders import until_holders
from harness.kwin import ACCEL, COMPONENT, KWIN, OUR_SCRIPT, SCREENS, SHORTCUTS, KWinDesktop
from harness.product import run_to_end
from harness.rect import Rect
from harness.waiting import until

from . import case, case_for_each
from .kwin_actions import NATURAL, every_action, open_application

CONTROL_ALT = 0x0C000000
QT_LEFT = CONTROL_ALT | 0x01000012
LETTERS = ("center", "almostMaximize")
# The program checks every two seconds, up to ten seconds late, whether its keys were lost, and registers all of them
# again at the next check.
LOOK = 13.0
LEFT = Rect(0, 0, 800, 900)


def works(desktop: KWinDesktop, product, window: str) -> None:
    desktop.eyes.place(window, NATURAL)
    desktop.press(product, "leftHalf")
    desktop.holds_frame(window, LEFT, "frame after the press")


@case("desktop.kwin.keys.locks")
def locks_change_nothing(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        for lock in ("CapsLock", "NumLock"):
            desktop.keyboard.chord(lock)
            every_action(desktop, product, client, NATURAL, SCREENS[0])


@case("desktop.kwin.keys.held")
def a_key_held_is_one_press(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        desktop.keyboard.hold("Control", "Alt", "Left")
        desktop.holds_frame(client.window, LEFT, "frame after the press")
        away = Rect(700, 300, 640, 480)
        desktop.eyes.place(client.window, away)
        # Passing time is the subject of this case.
        end = time.monotonic() + 1.5
        while time.monotonic() < end:
            assert desktop.eyes.frame(client.window) == away, "moved while the key was held"
        desktop.keyboard.release("Control", "Alt", "Left")
        product.until_at_rest()
        assert desktop.eyes.frame(client.window) == away, "the release moved the window"
        works(desktop, product, client.window)


@case_for_each("desktop.kwin.keys.layout", ("fr", "ru", "us,ru"))
def shortcuts_work_in_other_layouts(program, layout):
    with KWinDesktop(program, layout) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        if "," in layout:
            keyboard = ("org.kde.keyboard", "/Layouts", "org.kde.KeyboardLayouts")
            assert desktop.bus.call(keyboard, "setLayout", "(u)", 1)[0], "the second layout cannot be chosen"
        # KWin finds no keys for our letters in a layout without them.
        every_action(desktop, product, client, NATURAL, SCREENS[0], without=LETTERS if layout == "ru" else ())


@case("desktop.kwin.keys.taken")
def a_key_of_another_program_stays_with_it_and_is_named(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        other = ["org.example.Other", "theirs", "Another program", "Their action"]
        desktop.bus.call(ACCEL, "doRegister", "(as)", other)
        granted = desktop.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", other, [([QT_LEFT, 0, 0, 0],)], 6)
        assert granted == ([([QT_LEFT, 0, 0, 0],)],), f"the other program got {granted}"
        product = desktop.launch(status=None)
        until_holders(desktop.session, program, {"leftHalf": ("Another program", "Their action")})
        assert len(desktop.held_keys()) == len(SHORTCUTS) - 1, desktop.held_keys()
        desktop.eyes.place(client.window, NATURAL)
        desktop.press(product, "leftHalf")
        assert desktop.eyes.frame(client.window) == NATURAL, "the key of another program moved a window"
        desktop.press(product, "rightHalf")
        desktop.holds_frame(client.window, Rect(800, 0, 800, 900), "frame after a key that is ours")
        product.terminate()
        owners = desktop.bus.call(ACCEL, "getGlobalShortcutsByKey", "(i)", QT_LEFT)[0]
        assert [owner[2] for owner in owners] == ["org.example.Other"], owners


@case("desktop.kwin.keys.assigned")
def a_key_of_ours_goes_to_another_program_only_when_the_settings_give_it_away(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        other = ["org.example.Other", "theirs", "Another program", "Their action"]
        desktop.bus.call(ACCEL, "doRegister", "(as)", other)
        # KWin 6.7 grants it, earlier versions refuse it; our registration is the older one.
        desktop.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", other, [([QT_LEFT, 0, 0, 0],)], 6)
        works(desktop, product, client.window)
        assert product.status == "Active", product.status
        # As the system's settings do it: the key is taken from one action and given to the other.
        (ours,) = (each for each in desktop.bus.call(ACCEL, "allActionsForComponent", "(as)", [COMPONENT, "", "", ""])[0]
                   if desktop.bus.call(ACCEL, "shortcutKeys", "(as)", each)[0] == [([QT_LEFT, 0, 0, 0],)])
        desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", ours, [])
        desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", other, [([QT_LEFT, 0, 0, 0],)])
        product.until_status("Some shortcuts are taken: leftHalf", 2 * LOOK)
        desktop.eyes.place(client.window, NATURAL)
        desktop.press(product, "leftHalf")
        assert desktop.eyes.frame(client.window) == NATURAL, "the key of another program moved a window"
        desktop.press(product, "rightHalf")
        desktop.holds_frame(client.window, Rect(800, 0, 800, 900), "frame after a key that is ours")


@case("desktop.kwin.script-unloaded")
def an_unloaded_script_is_loaded_again(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        assert desktop.has_our_script(), "the script is not loaded"
        assert desktop.bus.call(KWIN, "unloadScript", "(s)", OUR_SCRIPT)[0], "it could not be unloaded"
        # The next press detects the loss, and the one after it works.
        desktop.eyes.place(client.window, NATURAL)
        desktop.press(product, "leftHalf")
        until(desktop.has_our_script, "the script to be loaded again")
        product.until_at_rest()
        works(desktop, product, client.window)


@case("desktop.kwin.restarted")
def it_works_with_the_kwin_that_comes_after(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        product = desktop.launch()
        works(desktop, product, client.window)
        desktop.keyboard.close()
        desktop.stop_kwin()
        product.until_status("Waiting for permission", 15.0)
        desktop.start_kwin()
        desktop.renew_keyboard()
        product.until_status("Active", 20.0)
        assert len(desktop.held_keys()) == len(SHORTCUTS), desktop.held_keys()
        works(desktop, product, open_application(desktop, "mousepad").window)


@case("desktop.kwin.killed")
def the_next_program_takes_over_the_keys_of_a_killed_one(program):
    with KWinDesktop(program) as desktop:
        client = open_application(desktop, "mousepad")
        killed = desktop.launch()
        desktop.session.processes.end(killed.process, signal.SIGKILL)
        desktop.products.remove(killed)
        killed.close()
        assert desktop.has_our_script(), "nothing was left, so nothing is tested"
        product = desktop.launch()
        assert len(desktop.held_keys()) == len(SHORTCUTS), desktop.held_keys()
        works(desktop, product, client.window)


@case("desktop.kwin.exit")
def nothing_is_left_after_the_end(program):
    with KWinDesktop(program) as desktop:
        open_application(desktop, "mousepad")
        for end in (lambda product: product.terminate(), quit_by_command):
            product = desktop.launch()
            assert desktop.has_our_script() and len(desktop.held_keys()) == len(SHORTCUTS)
            end(product)
            assert not desktop.has_our_script(), "the script outlived the program"
            assert desktop.held_keys() == [], "keys outlived the program"
        assert COMPONENT not in desktop.shortcut_settings(), "it is left in the settings of the shortcuts"


def quit_by_command(product) -> None:
    status, _, errors, _ = run_to_end(product.session, product.process.args[0], "--quit")
    assert status == 0, errors
    assert product.ended() == 0, product.errors()
