"""Window managers that announce little, nothing, or all of it late: every action exact, rules, keys, and their ends."""

import signal

from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.grabs import held_by_others
from harness.oracle import ACTIONS, expected
from harness.plain_managers import PLAIN_MANAGERS, PlainManager
from harness.plain_windows import PlainWindows
from harness.popover import Popover
from harness.product import run_to_end
from harness.rect import Rect
from harness.settling import settles_on
from harness.skipping import require
from harness.waiting import STARTING, until
from harness.watcher import GeometryWatcher
from harness.windows import ADD, REMOVE

from . import case_for_each
from .popover import is_within
from .rules import OWN, is_placed
from .window_manager_changes import POLL, taken

NATURAL = Rect(311, 173, 762, 503)


class PlainDesktop(Desktop):
    """A desktop with one of these window managers."""

    def __init__(self, program, manager: PlainManager | str, subject: str):
        manager = PLAIN_MANAGERS[manager] if isinstance(manager, str) else manager
        super().__init__(program, name=f"plain.{subject}.{manager.name}")
        self.windows.close()
        self.windows = PlainWindows(self.server.display, self.keyboard)
        self.manager = manager
        # Beside every window, for those window managers whose focus follows the pointer.
        self.keyboard.point(1900, 900)

    def begin(self) -> None:
        manager = self.manager
        require(manager.program, manager.package)
        for path, text in manager.configuration:
            self.session.configure(path, text)
        self.manager_process = self.session.start([*manager.command], manager.name, manager.environment)
        until(self.is_managed, f"{manager.name} to manage the screen", STARTING)
        until(lambda: self.windows.answers(0.1), f"{manager.name} to answer", STARTING)

    def is_managed(self) -> bool:
        assert self.manager_process.poll() is None, f"{self.manager.name} ended"
        return self.windows.is_redirected()

    def end_manager(self) -> None:
        self.session.processes.end(self.manager_process, signal.SIGKILL)
        self.manager_process = None

    def visible_frame(self) -> Rect:
        return self.manager.visible

    def launch_active(self):
        """The program, with the consent to borrow the keys that the window manager holds."""
        held = held_by_others(self.server.display)
        product = self.launch()
        if held:
            product.until_status(taken(held))
        # Grabs of the other kind are seen only by the program.
        if product.status != "Active":
            done = run_to_end(self.session, self.program, "--take-shortcuts", seconds=20.0)
            assert done[0] == 0, f"--take-shortcuts: {done}"
        product.until_status("Active")
        return product


def acts(desktop: PlainDesktop, product, one, action: str) -> None:
    windows = desktop.windows
    windows.place(one.window, NATURAL)
    windows.activate(one.window)
    before = windows.frame(one.window)
    settles = settles_on(windows, one.window, one.application, desktop.manager)
    wanted = expected(action, before, desktop.visible_frame(), settles)
    desktop.press(product, action)
    desktop.holds_frame(one.window, wanted, f"frame (from {before})")
    # The pointer may be elsewhere now, and take the focus along.
    windows.activate(one.window)
    watcher = GeometryWatcher(desktop.server.display, one.window)
    desktop.press(product, action)
    desktop.holds_frame(one.window, wanted, "frame after a repeat")
    changes = watcher.changes()
    watcher.close()
    takes_any_size = wanted.size == expected(action, wanted, desktop.visible_frame(), lambda size: size).size
    if takes_any_size:
        assert not changes, f"the repeat moved the window through {', '.join(map(str, changes))}"


@case_for_each("desktop.plain.actions", PLAIN_MANAGERS)
def every_action_on_every_application(program, manager):
    with PlainDesktop(program, manager, "actions") as desktop:
        desktop.begin()
        product = desktop.launch_active()
        failures = []
        for application in APPLICATIONS.values():
            if application.name in desktop.manager.hides:
                continue
            one = desktop.open(application)
            for action in ACTIONS:
                try:
                    acts(desktop, product, one, action)
                except AssertionError as failure:
                    failures.append(f"{application.name}, {action}: {failure}")
            desktop.end(one)
            until(lambda: one.window not in desktop.windows.managed(), f"{application.name} to end")
        assert not failures, "\n".join(failures)


@case_for_each("desktop.plain.rules", PLAIN_MANAGERS)
def the_first_window_of_an_application_is_placed(program, manager):
    with PlainDesktop(program, manager, "rules") as desktop:
        desktop.begin()
        desktop.session.install(OWN, "StartupWMClass=OwnWindow")
        desktop.session.rules({"org.xfce.mousepad": "maximize", "debian-xterm": "maximize", OWN: "center"})
        product = desktop.launch_active()
        for application, action in (
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["xterm"], "maximize"), (own_window(), "center"),
        ):
            if application.name in desktop.manager.hides:
                continue
            running = desktop.start(application)
            desktop.wait_for(running)
            is_placed(desktop, running, action, desktop.visible_frame())
            desktop.end(running)
            until(lambda: running.window not in desktop.windows.managed(), f"{application.name} to end")
        product.until_at_rest()


@case_for_each("desktop.plain.life", PLAIN_MANAGERS)
def its_end_and_its_return_are_noticed(program, manager):
    with PlainDesktop(program, manager, "life") as desktop:
        product = desktop.launch()
        product.until_status("Waiting for permission")
        desktop.begin()
        until(lambda: product.status != "Waiting for permission", f"{manager} to be noticed", POLL)
        desktop.end_manager()
        product.until_status("Waiting for permission", POLL)
        desktop.begin()
        until(lambda: product.status != "Waiting for permission", f"the next {manager} to be noticed", POLL)
        done = run_to_end(desktop.session, program, "--take-shortcuts", seconds=20.0)
        assert done[0] == 0, f"--take-shortcuts: {done}"
        product.until_status("Active")
        one = desktop.open(APPLICATIONS["mousepad"])
        acts(desktop, product, one, "rightHalf")


# Those that do not maximize windows on request.
WITHOUT_REQUEST = ("mwm", "lwm", "twm", "9wm", "flwm", "miwm", "wm2", "vtwm")
MAXIMIZING = [name for name in PLAIN_MANAGERS if name not in WITHOUT_REQUEST]
BOTH = ("MAXIMIZED_VERT", "MAXIMIZED_HORZ")


@case_for_each("desktop.plain.maximized", MAXIMIZING)
def a_maximized_window_is_released_and_placed(program, manager):
    with PlainDesktop(program, manager, "maximized") as desktop:
        desktop.begin()
        product = desktop.launch_active()
        windows = desktop.windows
        one = desktop.open(APPLICATIONS["mousepad"])
        failures = []
        single = (BOTH[:1], BOTH[1:])
        for states in single if desktop.manager.calls_maximized_fullscreen else (BOTH, *single):
            for action in ("leftHalf", "almostMaximize"):
                windows.place(one.window, NATURAL)
                windows.activate(one.window)
                natural = windows.frame(one.window)
                wanted = expected(action, natural, desktop.visible_frame(), lambda size: size)
                windows.change_state(one.window, ADD, *states)
                windows.until_at_rest(one.window)
                windows.activate(one.window)
                try:
                    desktop.press(product, action)
                    desktop.holds_frame(one.window, wanted, "frame")
                    left = windows.states(one.window) & set(BOTH)
                    assert not left, f"still {left}"
                except AssertionError as failure:
                    failures.append(f"{'+'.join(states)}, {action}: {failure}")
                for state in windows.states(one.window) & set(BOTH):
                    windows.change_state(one.window, REMOVE, state)
        assert not failures, "\n".join(failures)


@case_for_each("desktop.plain.popover", PLAIN_MANAGERS)
def the_popover_opens_and_gives_the_keyboard_back(program, manager):
    with PlainDesktop(program, manager, "popover") as desktop:
        desktop.begin()
        product = desktop.launch_active()
        popover = Popover(desktop, product)
        one = desktop.open(APPLICATIONS["mousepad"])
        desktop.windows.place(one.window, NATURAL)
        for way in ("Escape", "outside"):
            desktop.windows.activate(one.window)
            popover.ask_to_open()
            frame = popover.until_open(when=f", to be closed by {way}")
            screen = desktop.windows.root.get_geometry()
            assert is_within(frame, Rect(0, 0, screen.width, screen.height)), f"{frame} is not on the screen"
            if way == "Escape":
                popover.close()
                until(lambda: desktop.windows.active() == one.window, "the editor to have the keyboard again",
                      saw=desktop.windows.active)
            else:
                place = desktop.windows.client_rect(one.window)
                desktop.keyboard.click(place.x + 20, place.y + place.height - 20)
                popover.until_closed()
        acts(desktop, product, one, "rightHalf")
