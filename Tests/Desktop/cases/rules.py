"""App rules: the first window of a ruled application is placed at its launch, and nothing else is."""

import signal
from dataclasses import replace

from harness import servers
from harness.applications import APPLICATIONS, Application, own_window, tk_window
from harness.desktop import Desktop, RunningApplication
from harness.monitors import Monitors, Plug
from harness.oracle import centred, expected
from harness.product import run_to_end
from harness.rect import Rect
from harness.settling import settles_on
from harness.waiting import until

from . import case, case_for_each

MANAGERS = ("openbox", "xfwm4", "metacity", "kwin_x11", "mutter")
OWN = "org.example.Own"
OWN_PLACE = (240, 180, 420, 300)


def start_with_rules(desktop: Desktop, rules: dict[str, str], environment=None, status: str = "Active"):
    """The program with these rules; our own window and the one made with Tk are installed as applications."""
    desktop.session.install(OWN, "StartupWMClass=OwnWindow")
    desktop.session.install("org.example.Tk", "StartupWMClass=Tkwindow")
    desktop.session.rules(rules)
    product = desktop.launch(environment=environment)
    product.until_status(status)
    return product


def launch(desktop: Desktop, application: Application) -> RunningApplication:
    # A window that fills its screen may have no shadow.
    running = desktop.start(replace(application, draws_shadow=False))
    desktop.wait_for(running)
    return running


def open_another(desktop: Desktop, running: RunningApplication, kind: str = "NORMAL") -> int:
    """Makes our own application open one more window of that type. Returns the window once it is managed."""
    windows = desktop.windows
    before = windows.all_of_process(running.process.pid)
    windows.send_message(before[0], "_OWN_WINDOW_OPEN", kind)
    managed = lambda: [one for one in windows.all_of_process(running.process.pid) if one not in before]
    (another,) = until(managed, f"another window ({kind})", saw=windows.managed)
    windows.fence()
    return another


def stays(desktop: Desktop, product, window: int, what: str) -> None:
    """Checks that the window is at its application's position, and that no placement is pending."""
    product.until_at_rest()
    desktop.windows.fence()
    rect = desktop.windows.client_rect(window)
    assert rect.size == OWN_PLACE[2:], f"{what} was placed: {rect}"


def is_placed(desktop: Desktop, running: RunningApplication, action: str, visible: Rect | None = None) -> None:
    """Waits until the application's window has the frame of the action."""
    visible = visible or desktop.visible_frame()

    def wanted() -> Rect:
        # A window manager may add a title later.
        settles = settles_on(desktop.windows, running.window, running.application, desktop.manager)
        frame = desktop.windows.frame(running.window)
        return expected(action, frame, visible, settles) if action == "maximize" else centred(frame.size, visible)

    until(
        lambda: desktop.windows.frame(running.window) == wanted(),
        f"{running.application.name} to stand as by {action}", 5.0,
        lambda: f"{desktop.windows.frame(running.window)}, wanted {wanted()}",
    )


@case_for_each("desktop.rules.first-window", MANAGERS)
def the_first_window_of_every_kind_of_application_is_placed(program, manager):
    with Desktop(program, name=f"rules.first-window.{manager}") as desktop:
        desktop.start_window_manager(manager)
        start_with_rules(desktop, {
            "org.xfce.mousepad": "maximize", "featherpad": "center", "debian-xterm": "maximize",
            "org.example.Tk": "maximize", OWN: "center",
        })
        for application, action in (
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["mousepad-csd"], "maximize"),
            (APPLICATIONS["featherpad"], "center"), (APPLICATIONS["xterm"], "maximize"),
            (tk_window(), "maximize"), (own_window(), "center"), (own_window("--fixed"), "center"),
        ):
            running = launch(desktop, application)
            is_placed(desktop, running, action)
            desktop.end(running)


@case_for_each("desktop.rules.restored", MANAGERS)
def a_window_that_its_application_puts_back_is_placed_once_more(program, manager):
    with Desktop(program, name=f"rules.restored.{manager}") as desktop:
        desktop.start_window_manager(manager)
        start_with_rules(desktop, {OWN: "maximize"})
        running = launch(desktop, own_window("--restores"))
        log = desktop.session.logs / "own.log"
        until(lambda: "restored" in log.read_text(), "the application to put its window back", saw=log.read_text)
        is_placed(desktop, running, "maximize")


@case_for_each("desktop.rules.only-the-first", MANAGERS)
def other_windows_and_windows_of_other_kinds_are_left_alone(program, manager):
    with Desktop(program, name=f"rules.only-the-first.{manager}") as desktop:
        desktop.start_window_manager(manager)
        product = start_with_rules(desktop, {OWN: "maximize"})
        # Windows before the first ordinary window do not use the rule up.
        running = launch(desktop, own_window("--type", "SPLASH"))
        splash = running.window
        stays(desktop, product, splash, "the splash screen")
        for kind in ("DIALOG", "UTILITY"):
            stays(desktop, product, open_another(desktop, running, kind), f"the first window, a {kind.lower()}")
        running.window = open_another(desktop, running)
        is_placed(desktop, running, "maximize")
        stays(desktop, product, open_another(desktop, running), "a second window")
        stays(desktop, product, splash, "the splash screen")


@case_for_each("desktop.rules.monitors", MANAGERS)
def a_window_is_placed_on_the_monitor_that_it_opens_on(program, manager):
    with Desktop(program, servers.two_monitors, f"rules.monitors.{manager}") as desktop:
        desktop.start_window_manager(manager)
        first, second = Plug("DUMMY0", Rect(0, 0, 1920, 1080), primary=True), Plug("DUMMY1", Rect(1920, 0, 1280, 800))
        Monitors(desktop).arrange(first, second)
        start_with_rules(desktop, {OWN: "maximize"})
        for plug, place in ((second, ("2100", "150")), (first, ("240", "180"))):
            running = launch(desktop, own_window("--place", *place, "420", "300"))
            is_placed(desktop, running, "maximize", plug.frame)
            desktop.end(running)


@case_for_each("desktop.rules.processes", MANAGERS)
def every_process_has_a_first_window_and_a_relaunched_one_again(program, manager):
    with Desktop(program, name=f"rules.processes.{manager}") as desktop:
        desktop.start_window_manager(manager)
        start_with_rules(desktop, {OWN: "maximize"})
        for _ in range(2):
            first, second = launch(desktop, own_window()), launch(desktop, own_window())
            is_placed(desktop, first, "maximize")
            is_placed(desktop, second, "maximize")
            desktop.end(first)
            desktop.end(second)


@case_for_each("desktop.rules.changed", MANAGERS)
def a_rule_holds_from_the_moment_that_it_is_made_until_it_is_removed(program, manager):
    with Desktop(program, name=f"rules.changed.{manager}") as desktop:
        desktop.start_window_manager(manager)
        product = start_with_rules(desktop, {})

        def rule(action: str) -> None:
            status, _, errors, _ = run_to_end(desktop.session, program, "--rule", OWN, action)
            assert status == 0, errors

        running = launch(desktop, own_window())
        rule("maximize")
        stays(desktop, product, running.window, "a window that was open before the rule")
        utility = open_another(desktop, running, "UTILITY")
        desktop.windows.send_message(running.window, "WM_PROTOCOLS", "WM_DELETE_WINDOW")
        until(lambda: desktop.windows.all_of_process(running.process.pid) == [utility], "the first window to close")
        running.window = open_another(desktop, running)
        is_placed(desktop, running, "maximize")
        rule("none")
        stays(desktop, product, launch(desktop, own_window()).window, "a window after the rule was removed")


@case_for_each("desktop.rules.late-class", MANAGERS)
def an_application_that_sets_its_name_late_is_recognized(program, manager):
    with Desktop(program, name=f"rules.late-class.{manager}") as desktop:
        desktop.start_window_manager(manager)
        start_with_rules(desktop, {OWN: "maximize"})
        is_placed(desktop, launch(desktop, own_window("--class-late")), "maximize")


@case("desktop.rules.just-installed")
def an_application_that_was_installed_meanwhile_is_recognized(program):
    with Desktop(program, name="rules.just-installed") as desktop:
        desktop.start_window_manager("openbox")
        start_with_rules(desktop, {"org.example.New": "maximize"})
        desktop.session.install("org.example.New", "StartupWMClass=Newcomer")
        is_placed(desktop, launch(desktop, own_window("--class-name", "Newcomer")), "maximize")


@case_for_each("desktop.rules.killed", MANAGERS)
def an_application_that_is_killed_as_it_starts_leaves_no_trace(program, manager):
    with Desktop(program, name=f"rules.killed.{manager}") as desktop:
        desktop.start_window_manager(manager)
        product = start_with_rules(desktop, {OWN: "maximize"})
        log = desktop.session.logs / "own.log"
        for number in range(20):
            before = log.read_text() if log.exists() else ""
            running = desktop.start(own_window())
            # Once as early as the window is mapped, once as late as it is managed.
            shown = lambda: log.read_text() != before
            managed = lambda: desktop.windows.all_of_process(running.process.pid)
            until(shown if number % 2 == 0 else managed, "the window to appear")
            desktop.session.processes.end(running.process, signal.SIGKILL)
        product.until_at_rest()
        is_placed(desktop, launch(desktop, own_window()), "maximize")


@case_for_each("desktop.rules.together", MANAGERS)
def ten_applications_that_are_launched_together_are_all_placed(program, manager):
    with Desktop(program, name=f"rules.together.{manager}") as desktop:
        desktop.start_window_manager(manager)
        names = [f"Application{number}" for number in range(10)]
        for name in names:
            desktop.session.install(f"org.example.{name}", f"StartupWMClass={name}")
        start_with_rules(desktop, {f"org.example.{name}": "maximize" for name in names})
        launched = [desktop.start(own_window("--class-name", name)) for name in names]
        for running in launched:
            desktop.wait_for(running)
            is_placed(desktop, running, "maximize")


@case("desktop.rules.switched-off")
def switched_off_the_rules_rest(program):
    with Desktop(program, name="rules.switched-off") as desktop:
        desktop.start_window_manager("openbox")
        desktop.session.install(OWN, "StartupWMClass=OwnWindow")
        desktop.session.settings(
            f"<key>enabled</key><false/><key>rules</key><dict><key>{OWN}</key><string>maximize</string></dict>"
        )
        product = desktop.launch()
        product.until_status("Paused")
        stays(desktop, product, launch(desktop, own_window()).window, "a window")
