"""App rules on Wayfire: the first window of a ruled application is placed."""

from dataclasses import replace

from harness.applications import APPLICATIONS
from harness.oracle import centred
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
def a_second_window_is_left_alone(program):
    with WayfireDesktop(program, name="wayfire.rules.only-the-first") as desktop:
        before = launch(desktop, APPLICATIONS["featherpad"])
        start_with_rules(desktop, {"org.xfce.mousepad": "maximize", "featherpad": "maximize"})
        first = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, first, "maximize")
        second = launch(desktop, APPLICATIONS["mousepad"])
        until(lambda: desktop.is_at_rest(second.number), "the second window to come to rest")
        desktop.products[0].until_at_rest()
        assert desktop.frame(second.number) != desktop.work_area(), "the second window was placed"
        assert desktop.frame(before.number) != desktop.work_area(), "a window from before the program was placed"


@case("desktop.wayfire.rules.workspace")
def a_window_on_a_hidden_workspace_is_placed_there(program):
    with WayfireDesktop(program, name="wayfire.rules.workspace") as desktop:
        start_with_rules(desktop, {"org.xfce.mousepad": "maximize"})
        number = launch(desktop, APPLICATIONS["featherpad"]).number
        output = desktop.window(number).output
        desktop.connection.ask("vswitch/send-view", **{"view-id": number, "x": 1, "y": 0, "output-id": output})
        until(lambda: desktop.window(number).goal.x >= desktop.work_area().width, "the window to be sent away",
              saw=lambda: desktop.window(number))
        desktop.connection.ask("vswitch/set-workspace", **{"x": 1, "y": 0, "output-id": output})
        until(lambda: desktop.connection.focused() == number, "the window to have the focus")
        desktop.press(desktop.products[0], "rightHalf")
        area = desktop.work_area()
        desktop.holds_frame(number, area._replace(x=area.x + area.width // 2, width=area.width // 2), "the right half")
