"""App rules on i3: the first window of a ruled application is taken out of the layout and placed."""

from dataclasses import replace

from harness import servers
from harness.applications import APPLICATIONS, Application, own_window, tk_window
from harness.desktop import RunningApplication
from harness.i3 import I3Desktop
from harness.monitors import Monitors, Plug
from harness.oracle import centred, corrected
from harness.product import run_to_end
from harness.rect import Rect
from harness.settling import settles_on
from harness.waiting import until

from . import case

OWN = "org.example.Own"


def start_with_rules(desktop: I3Desktop, rules: dict[str, str]):
    desktop.session.install(OWN, "StartupWMClass=OwnWindow")
    desktop.session.install("org.example.Tk", "StartupWMClass=Tkwindow")
    desktop.session.rules(rules)
    product = desktop.launch()
    product.until_status("Active")
    return product


def launch(desktop: I3Desktop, application: Application) -> RunningApplication:
    running = desktop.start(application)
    desktop.wait_for(running)
    return running


def is_placed(desktop: I3Desktop, running: RunningApplication, action: str, output: int = 0) -> None:
    def wanted() -> Rect:
        visible = desktop.work_area(output)
        if action == "center":
            return centred(desktop.windows.frame(running.window).size, visible)
        settles = settles_on(desktop.windows, running.window, running.application, desktop.manager)
        return corrected(action, settles(visible.size), visible, visible)

    until(
        lambda: desktop.node(running.window).floating and desktop.windows.frame(running.window) == wanted(),
        f"{running.application.name} to stand as by {action}", 5.0,
        lambda: f"{desktop.windows.frame(running.window)}, {desktop.node(running.window)}, wanted {wanted()}",
    )


def stays_in_layout(desktop: I3Desktop, product, window: int, what: str) -> None:
    # A placement follows a window's events at once, and is repeated within half a second.
    product.until_at_rest()
    assert not desktop.node(window).floating, f"{what} was placed: {desktop.windows.frame(window)}"


@case("desktop.i3.rules.first-window")
def the_first_window_of_every_kind_of_program_is_placed(program):
    with I3Desktop(program, name="i3.rules.first-window") as desktop:
        start_with_rules(desktop, {
            "org.xfce.mousepad": "maximize", "featherpad": "center", "debian-xterm": "maximize",
            "org.example.Tk": "maximize", OWN: "maximize",
        })
        for application, action in (
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["featherpad"], "center"),
            (APPLICATIONS["xterm"], "maximize"), (tk_window(), "maximize"), (own_window(), "maximize"),
            # Again, when it restores its last position.
            (APPLICATIONS["mousepad"], "maximize"),
        ):
            running = launch(desktop, application)
            is_placed(desktop, running, action)
            desktop.end(running)


@case("desktop.i3.rules.only-the-first")
def further_windows_and_dialogs_are_left_alone(program):
    with I3Desktop(program, name="i3.rules.only-the-first") as desktop:
        product = start_with_rules(desktop, {OWN: "maximize"})
        windows = desktop.windows

        def another(kind: str) -> int:
            before = windows.managed()
            windows.send_message(running.window, "_OWN_WINDOW_OPEN", kind)
            new = lambda: [window for window in windows.managed() if window not in before]
            (window,) = until(new, f"another window ({kind})", saw=windows.managed)
            windows.fence()
            return window

        # Windows before the first ordinary window do not use the rule up.
        running = launch(desktop, own_window("--type", "SPLASH"))
        splash = windows.frame(running.window)
        splash_window = running.window
        dialog = another("DIALOG")
        place = windows.frame(dialog)
        running.window = another("NORMAL")
        is_placed(desktop, running, "maximize")
        stays_in_layout(desktop, product, another("NORMAL"), "a second window")
        assert windows.frame(splash_window) == splash, "the splash screen was placed"
        assert windows.frame(dialog) == place, "a dialog was placed"
        is_placed(desktop, running, "maximize")


@case("desktop.i3.rules.monitors")
def a_window_is_placed_on_the_monitor_that_it_opens_on(program):
    with I3Desktop(program, name="i3.rules.monitors", server=servers.two_monitors) as desktop:
        first, second = Plug("DUMMY0", Rect(0, 0, 1920, 1080), primary=True), Plug("DUMMY1", Rect(1920, 0, 1280, 800))
        Monitors(desktop).arrange(first, second)
        desktop.connect()
        start_with_rules(desktop, {OWN: "maximize"})
        for output, plug in ((1, second), (0, first)):
            desktop.command(f"focus output {plug.output}")
            running = launch(desktop, own_window())
            is_placed(desktop, running, "maximize", output)
            desktop.end(running)


ASSIGNED = 'assign [class="^OwnWindow$"] workspace 9\n'


@case("desktop.i3.rules.elsewhere")
def a_window_that_opens_on_a_hidden_workspace_stays_there(program):
    with I3Desktop(program, ASSIGNED, "i3.rules.elsewhere") as desktop:
        product = start_with_rules(desktop, {OWN: "maximize"})
        desktop.open(APPLICATIONS["featherpad"])
        running = launch(desktop, own_window())
        until(lambda: desktop.node(running.window).floating, "the window to leave the layout")
        product.until_at_rest()
        assert desktop.node(running.window).workspace == "9", desktop.node(running.window)
        # i3 applies the frame when the workspace is shown.
        desktop.command("workspace 9")
        is_placed(desktop, running, "maximize")


@case("desktop.i3.rules.not-utf8")
def a_window_whose_class_is_not_utf8_holds_up_no_other(program):
    xterm = APPLICATIONS["xterm"]
    with I3Desktop(program, name="i3.rules.not-utf8") as desktop:
        start_with_rules(desktop, {OWN: "maximize"})
        launch(desktop, replace(xterm, command=(*xterm.command, "-class", "X\udce9")))
        is_placed(desktop, launch(desktop, own_window()), "maximize")


@case("desktop.i3.rules.scratchpad")
def a_window_that_the_user_puts_away_is_not_fetched(program):
    put_away = 'for_window [class="^OwnWindow$"] move scratchpad\n'
    with I3Desktop(program, put_away, "i3.rules.scratchpad") as desktop:
        product = start_with_rules(desktop, {OWN: "maximize"})
        running = launch(desktop, own_window())
        product.until_at_rest()
        assert desktop.node(running.window).workspace == "__i3_scratch", desktop.node(running.window)


@case("desktop.i3.rules.floating")
def a_window_that_floats_from_the_beginning_is_placed(program):
    floats = 'for_window [class="^OwnWindow$"] floating enable, border pixel 4\n'
    with I3Desktop(program, floats, "i3.rules.floating") as desktop:
        start_with_rules(desktop, {OWN: "maximize"})
        running = launch(desktop, own_window())
        is_placed(desktop, running, "maximize")
        assert desktop.node(running.window)[1:3] == ("pixel", 4), desktop.node(running.window)


@case("desktop.i3.rules.changed")
def a_rule_holds_from_the_moment_that_it_is_made_until_it_is_removed(program):
    with I3Desktop(program, name="i3.rules.changed") as desktop:
        product = start_with_rules(desktop, {})

        def rule(action: str) -> None:
            status, _, errors, _ = run_to_end(desktop.session, program, "--rule", OWN, action)
            assert status == 0, errors

        open_before = launch(desktop, own_window())
        rule("maximize")
        running = launch(desktop, own_window())
        is_placed(desktop, running, "maximize")
        stays_in_layout(desktop, product, open_before.window, "a window that was open before the rule")
        # After a window manager's restart, open windows do not count as new.
        desktop.restart_in_place()
        stays_in_layout(desktop, product, open_before.window, "a window that was open before the restart")
        rule("none")
        stays_in_layout(desktop, product, launch(desktop, own_window()).window, "a window after the rule was removed")
