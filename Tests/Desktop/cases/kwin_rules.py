"""KWin on Wayland: app rules, for applications of GTK, Qt and X11."""

import sys

from harness.applications import APPLICATIONS, OWN_WINDOW
from harness.kwin import SCREENS, Client, KWinDesktop
from harness.oracle import centred, corrected
from harness.rect import Rect
from harness.waiting import until

from . import case

OWN = "org.example.Own"
# No terminal's character is larger, in points.
CHARACTER = 25


def start_with_rules(desktop: KWinDesktop, rules: dict[str, str]):
    desktop.session.install(OWN, "StartupWMClass=OwnWindow")
    desktop.session.rules(rules)
    return desktop.launch()


def launch(desktop: KWinDesktop, *wishes: str) -> Client:
    """Starts our own test window, an X11 client."""
    return desktop.wait_for(desktop.start(sys.executable, OWN_WINDOW, *wishes))


def is_placed(desktop: KWinDesktop, client: Client, action: str, visible: Rect = SCREENS[0]) -> None:
    def is_there() -> bool:
        frame = desktop.eyes.frame(client.window)
        if action == "center":
            return frame == centred(frame.size, visible)
        # A terminal counts in characters, and is centred in the remaining space.
        missing = max(visible.width - frame.width, visible.height - frame.height)
        return 0 <= missing < CHARACTER and frame == corrected(action, frame.size, visible, visible)

    until(is_there, f"the window to stand as by {action}", 5.0, lambda: desktop.eyes.frame(client.window))


def stays(desktop: KWinDesktop, product, window: str, what: str) -> None:
    product.until_at_rest()
    desktop.eyes.look()
    product.until_at_rest()
    frame = desktop.eyes.frame(window)
    assert frame != SCREENS[0], f"{what} was placed: {frame}"


@case("desktop.kwin.rules.first-window")
def the_first_window_of_every_kind_of_application_is_placed(program):
    with KWinDesktop(program) as desktop:
        start_with_rules(desktop, {
            "org.xfce.mousepad": "maximize", "featherpad": "center", "debian-xterm": "maximize", OWN: "center",
        })
        for name, action in (("mousepad", "maximize"), ("featherpad", "center"), ("xterm", "maximize")):
            for _ in range(2):
                client = desktop.wait_for(desktop.start(*APPLICATIONS[name].command))
                is_placed(desktop, client, action)
                desktop.end(client)
        client = launch(desktop)
        is_placed(desktop, client, "center")


@case("desktop.kwin.rules.restored")
def a_window_that_its_application_puts_back_is_placed_once_more(program):
    with KWinDesktop(program) as desktop:
        start_with_rules(desktop, {OWN: "maximize"})
        client = launch(desktop, "--restores")
        log = desktop.session.logs / f"{client.log}.log"
        until(lambda: "restored" in log.read_text(), "the application to put its window back", saw=log.read_text)
        is_placed(desktop, client, "maximize")


@case("desktop.kwin.rules.only-the-first")
def other_windows_are_left_alone(program):
    with KWinDesktop(program) as desktop:
        product = start_with_rules(desktop, {OWN: "maximize", "org.xfce.mousepad": "maximize"})
        # A dialog is no first window.
        dialog = launch(desktop, "--type", "DIALOG")
        stays(desktop, product, dialog.window, "a dialog")
        desktop.end(dialog)
        first = desktop.wait_for(desktop.start(*APPLICATIONS["mousepad"].command))
        is_placed(desktop, first, "maximize")
        desktop.eyes.activate(first.window)
        desktop.keyboard.chord("Control", "Shift", "N")
        second = until(
            lambda: [each.id for each in desktop.eyes.of_process(first.process.pid) if each.id != first.window],
            "a second window")
        stays(desktop, product, second[0], "a second window")


@case("desktop.kwin.rules.together")
def ten_applications_that_are_launched_together_are_all_placed(program):
    with KWinDesktop(program) as desktop:
        names = [f"Application{number}" for number in range(10)]
        for name in names:
            desktop.session.install(f"org.example.{name}", f"StartupWMClass={name}")
        start_with_rules(desktop, {f"org.example.{name}": "maximize" for name in names})
        launched = [desktop.start(sys.executable, OWN_WINDOW, "--class-name", name) for name in names]
        for process in launched:
            is_placed(desktop, desktop.wait_for(process), "maximize")
