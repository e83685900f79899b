"""App rules on sway: the first window of a ruled application is taken out of the layout and placed."""

from dataclasses import replace

from harness.applications import APPLICATIONS
from harness.sway import SwayDesktop
from harness.waiting import until

from . import case
from .compositors import XTERM, is_placed, launch, start_with_rules


def stays_in_layout(desktop: SwayDesktop, product, number: int, what: str) -> None:
    # A placement follows a window's events at once, and is repeated within half a second.
    product.until_at_rest()
    assert desktop.is_in_layout(number), f"{what} was placed: {desktop.window(number)}"


@case("desktop.sway.rules.only-the-first")
def further_windows_and_dialogs_are_left_alone(program):
    with SwayDesktop(program, name="sway.rules.only-the-first") as desktop:
        product = start_with_rules(desktop, {"org.xfce.mousepad": "maximize"})
        running = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, running, "maximize")
        desktop.command(f"[con_id={running.number}] focus")

        def another(*keys: str):
            before = {window.number for window in desktop.windows()}
            desktop.keyboard.chord(*keys)
            new = lambda: [window for window in desktop.windows() if window.number not in before]
            (window,) = until(new, "another window of the program", saw=desktop.windows)
            return window

        dialog = another("Control", "O")
        product.until_at_rest()
        assert desktop.frame(dialog.number).size != desktop.work_area().size, "a dialog was placed"
        desktop.keyboard.chord("Escape")
        until(lambda: all(window.number != dialog.number for window in desktop.windows()), "the dialog to be gone")
        second = another("Control", "Shift", "N")
        stays_in_layout(desktop, product, second.number, "a second window")
        is_placed(desktop, running, "maximize")


@case("desktop.sway.rules.outputs")
def a_window_is_placed_on_the_output_that_it_opens_on(program):
    with SwayDesktop(program, name="sway.rules.outputs") as desktop:
        start_with_rules(desktop, {"org.xfce.mousepad": "maximize"})
        for output in (1, 0):
            desktop.command(f"focus output HEADLESS-{output + 1}")
            running = launch(desktop, APPLICATIONS["mousepad"])
            is_placed(desktop, running, "maximize", output)
            desktop.end(running)


@case("desktop.sway.rules.not-utf8")
def a_window_whose_title_is_not_utf8_is_a_window_like_another(program):
    # In its locale, xterm passes the title on byte by byte.
    latin = replace(
        XTERM, command=(*XTERM.command, "-T", "caf\udce9"), environment=XTERM.environment | {"LC_ALL": "C"}
    )
    with SwayDesktop(program, name="sway.rules.not-utf8") as desktop:
        product = start_with_rules(desktop, {"org.xfce.mousepad": "maximize", "debian-xterm": "maximize"})
        is_placed(desktop, launch(desktop, latin), "maximize")
        is_placed(desktop, launch(desktop, APPLICATIONS["mousepad"]), "maximize")
        assert product.status == "Active", product.status


@case("desktop.sway.rules.elsewhere")
def a_window_that_opens_on_a_hidden_workspace_stays_there(program):
    with SwayDesktop(program, 'assign [app_id="mousepad"] workspace "9: notes"\n', "sway.rules.elsewhere") as desktop:
        start_with_rules(desktop, {"org.xfce.mousepad": "maximize"})
        # A workspace that is shown and then left belongs to its output.
        desktop.command('workspace "9: notes"')
        kept = launch(desktop, APPLICATIONS["featherpad"])
        desktop.command("workspace 1")
        running = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, running, "maximize")
        assert desktop.window(running.number).workspace == "9: notes", desktop.window(running.number)
        assert desktop.window(kept.number).workspace == "9: notes"


@case("desktop.sway.rules.changed")
def a_rule_holds_from_the_moment_that_it_is_made_until_it_is_removed(program):
    with SwayDesktop(program, name="sway.rules.changed") as desktop:
        product = start_with_rules(desktop, {})

        def rule(action: str) -> None:
            status, _, errors, _ = desktop.ask_program("--rule", "org.xfce.mousepad", action)
            assert status == 0, errors

        open_before = launch(desktop, APPLICATIONS["mousepad"])
        rule("maximize")
        running = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, running, "maximize")
        stays_in_layout(desktop, product, open_before.number, "a window that was open before the rule")
        rule("none")
        last = launch(desktop, APPLICATIONS["mousepad"])
        stays_in_layout(desktop, product, last.number, "a window after the rule was removed")
