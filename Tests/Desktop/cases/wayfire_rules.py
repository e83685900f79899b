"""App rules on Wayfire, and windows on other workspaces."""

from harness.applications import APPLICATIONS
from harness.oracle import centred
from harness.waiting import until
from harness.wayfire import WayfireDesktop

from . import case
from .compositors import is_placed, launch, start_with_rules

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
        status, _, errors, _ = desktop.ask_program("--perform", "right-half")
        assert status == 0, errors
        wanted = area._replace(x=area.x + area.width // 2, width=area.width // 2)
        desktop.holds_frame(number, wanted, "the right half")
        # It has stayed on that workspace.
        desktop.connection.ask("vswitch/set-workspace", **(goes | {"x": 0}))
        desktop.holds_frame(number, wanted._replace(x=wanted.x + area.width), "the frame seen from the first workspace")
