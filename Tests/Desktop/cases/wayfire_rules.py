"""App rules on Wayfire: the first window of a ruled application is placed."""

from dataclasses import replace

from harness.applications import APPLICATIONS
from harness.oracle import centred
from harness.product import run_to_end
from harness.rect import Rect
from harness.waiting import until
from harness.wayfire import WayfireDesktop, WayfireWindow

from . import case

XTERM = replace(APPLICATIONS["xterm"], environment={"WAYLAND_DISPLAY": ""})


def start_with_rules(desktop: WayfireDesktop, rules: dict[str, str]):
    desktop.session.rules(rules)
    product = desktop.launch()
    product.until_status("Active")
    return product


def is_placed(desktop: WayfireDesktop, running: WayfireWindow, action: str, output: int = 0) -> None:
    def wanted() -> Rect:
        visible = desktop.work_area(output)
        return visible if action == "maximize" else centred(desktop.frame(running.number).size, visible)

    until(lambda: desktop.frame(running.number) == wanted(), f"{running.application.name} to stand as by {action}", 5.0,
          lambda: f"{desktop.window(running.number)}, wanted {wanted()}")


def launch(desktop: WayfireDesktop, application) -> WayfireWindow:
    running = desktop.launch_application(application)
    desktop.wait_for(running)
    return running


@case("desktop.wayfire.rules.first-window")
def the_first_window_of_every_kind_of_program_is_placed(program):
    with WayfireDesktop(program, name="wayfire.rules.first-window") as desktop:
        start_with_rules(desktop, {
            "org.xfce.mousepad": "maximize", "featherpad": "center", "debian-xterm": "maximize",
        })
        for application, action in (
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["featherpad"], "center"), (XTERM, "maximize"),
            # Again, when it restores its last position.
            (APPLICATIONS["mousepad"], "maximize"), (APPLICATIONS["mousepad"], "maximize"),
        ):
            running = launch(desktop, application)
            is_placed(desktop, running, action)
            desktop.end(running)


@case("desktop.wayfire.rules.only-the-first")
def further_windows_are_left_alone(program):
    # Nothing but a rule puts a window into the middle. (The program remembers its size, so that tells nothing.)
    with WayfireDesktop(program, "[place]\nmode = cascade\n", name="wayfire.rules.only-the-first") as desktop:
        before = launch(desktop, APPLICATIONS["featherpad"])
        product = start_with_rules(desktop, {"org.xfce.mousepad": "center", "featherpad": "center"})
        first = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, first, "center")

        def is_centred(number: int) -> bool:
            goal = desktop.window(number).goal
            return goal == centred(goal.size, desktop.work_area())

        desktop.connection.ask("window-rules/focus-view", id=first.number)

        def another(*keys: str) -> int:
            known = {view.number for view in desktop.windows()}
            desktop.keyboard.chord(*keys)
            new = lambda: [view.number for view in desktop.windows() if view.number not in known]
            (number,) = until(new, "another window of the program", saw=desktop.windows)
            return number

        second = another("Control", "Shift", "N")
        product.until_at_rest()
        assert not is_centred(second), "a second window was placed"
        assert not is_centred(before.number), "a window from before the program was placed"


@case("desktop.wayfire.workspace")
def a_window_on_another_workspace_is_placed_there(program):
    with WayfireDesktop(program, name="wayfire.workspace") as desktop:
        number = desktop.open(APPLICATIONS["featherpad"]).number
        product = desktop.launch()
        product.until_status("Active")
        output, area = desktop.window(number).output, desktop.work_area()
        goes = {"x": 1, "y": 0, "output-id": output}
        desktop.connection.ask("vswitch/set-workspace", **goes, **{"view-id": number})
        until(lambda: desktop.connection.output(output)["workspace"]["x"] == 1 and desktop.is_at_rest(number)
              and desktop.connection.focused() == number, "the window on the other workspace")
        status, _, errors, _ = run_to_end(desktop.session, program, "--perform", "right-half")
        assert status == 0, errors
        wanted = area._replace(x=area.x + area.width // 2, width=area.width // 2)
        desktop.holds_frame(number, wanted, "the right half")
        # It has stayed on that workspace.
        desktop.connection.ask("vswitch/set-workspace", **(goes | {"x": 0}))
        desktop.holds_frame(number, wanted._replace(x=wanted.x + area.width), "the frame seen from the first workspace")
