"""The popover holds the pointer; a screen locker needs the pointer for itself."""

from contextlib import closing
from itertools import cycle

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.locker import Locker
from harness.popover import Popover
from harness.system_bus import Speaker, boolean, start_system_bus
from harness.waiting import until

from . import case

SESSION, SESSION_PATH = "c7", "/org/freedesktop/login1/session/c7"
# The program releases the pointer after half a minute; a machine may be busy.
LATE = 60.0


def open_and_held(popover: Popover, locker: Locker) -> None:
    popover.ask_to_open()
    popover.until_open()
    until(lambda: not locker.could_take_pointer(), "the popover to hold the pointer")


@case("desktop.popover.session-locks")
def it_is_gone_when_the_session_locks(program):
    with Desktop(program, name="popover.session-locks") as desktop:
        login_manager = Speaker(start_system_bus(desktop.session), "org.freedesktop.login1")
        screensaver = Speaker(desktop.session.environment["DBUS_SESSION_BUS_ADDRESS"])
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch(environment={"XDG_SESSION_ID": SESSION})
        popover = Popover(desktop, product)
        hint = ("org.freedesktop.login1.Session", {"LockedHint": boolean(True)}, [])
        ways = {
            "asked to lock": lambda: login_manager.say(SESSION_PATH, "org.freedesktop.login1.Session", "Lock"),
            "said to be locked": lambda: login_manager.say(
                SESSION_PATH, "org.freedesktop.DBus.Properties", "PropertiesChanged", "(sa{sv}as)", *hint
            ),
            "screensaver": lambda: screensaver.say(
                "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "ActiveChanged", "(b)", True
            ),
        }
        with closing(Locker(desktop.server.display)) as locker:
            for way, say in ways.items():
                open_and_held(popover, locker)

                def reported() -> bool:
                    # The program receives signals once it is connected to the bus, which cannot be observed from
                    # outside.
                    say()
                    return not popover.is_open()

                until(reported, f"the popover to be gone: {way}")
                locker.lock()
                locker.unlock()
                desktop.windows.activate(editor.window)
                product.until_at_rest()
        desktop.press(product, "rightHalf")
        until(lambda: desktop.windows.frame(editor.window).x == 960, "the keys to work afterwards")
        assert product.errors() == "", product.errors()


@case("desktop.popover.lets-go")
def left_alone_it_lets_go_of_the_pointer_until_its_user_is_back(program):
    with Desktop(program, name="popover.lets-go") as desktop:
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        popover = Popover(desktop, product)
        with closing(Locker(desktop.server.display)) as locker:
            desktop.keyboard.point(100, 900)
            open_and_held(popover, locker)
            until(locker.could_take_pointer, "the pointer to be free", LATE)
            frame = popover.frame()
            assert frame, "it closed"
            steps = cycle((20, 21))

            def is_held_again() -> bool:
                # A person goes on moving. The locker may hold the pointer for its own question at the first motion.
                is_held = not locker.could_take_pointer()
                if not is_held:
                    desktop.keyboard.point(frame.x + next(steps), frame.y + 20)
                return is_held

            until(is_held_again, "the popover to hold the pointer again", saw=popover.frame)
            desktop.keyboard.click(100, 900)
            popover.until_closed(when=" by a click beside it")
        assert product.errors() == "", product.errors()
