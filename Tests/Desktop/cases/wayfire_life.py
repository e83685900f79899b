"""The program on Wayfire: plugins that are missing, and its own window."""

from harness.applications import APPLICATIONS
from harness.popover import GAP, SHADOW, WIDTH
from harness.waiting import until
from harness.wayfire import NEEDED, WayfireDesktop
from harness.wayfire_ipc import View

from . import case, case_for_each
from .compositors import POLL, open_editor, works


def printed_status(desktop: WayfireDesktop) -> str:
    status, output, errors, _ = desktop.ask_program("--status")
    assert status == 0, errors
    return output


@case_for_each("desktop.wayfire.plugins", NEEDED)
def a_missing_plugin_is_named_until_the_user_adds_it(program, plugin):
    # Without "ipc" nothing of the IPC is there, and the compositor is recognized by its process alone.
    present = () if plugin == "ipc" else tuple(name for name in NEEDED if name != plugin)
    with WayfireDesktop(program, name=f"wayfire.plugins.{plugin}", needed=present) as desktop:
        desktop.session.environment["XDG_CURRENT_DESKTOP"] = ""
        product = desktop.launch()
        product.until_status("Waiting for permission")
        missing = " ".join(name for name in NEEDED if name not in present)
        wanted = (f"Wayfire lacks plugins that Tessel needs; add “{missing}” to the line “plugins” in the section “core”"
                  f" of {desktop.configuration}")
        until(lambda: wanted in printed_status(desktop), "the missing plugins to be named",
              saw=lambda: printed_status(desktop))
        # Wayfire loads a plugin as soon as it is in the file.
        desktop.configure()
        product.until_status("Active", POLL)
        if desktop.connection is None:
            desktop.connect()
        works(desktop, product, open_editor(desktop), "leftHalf", f"with the plugin {plugin}")


def own_windows(desktop: WayfireDesktop, product) -> list[View]:
    return [view for view in desktop.windows() if view.process == product.process.pid]


@case("desktop.wayfire.popover")
def a_second_start_opens_the_popover_and_leaving_closes_it(program):
    with WayfireDesktop(program, name="wayfire.popover") as desktop:
        editor = desktop.open(APPLICATIONS["mousepad"])
        before = desktop.frame(editor.number)
        product = desktop.launch()

        def stands_in_the_corner() -> bool:
            area = desktop.work_area(0)
            shown = own_windows(desktop, product)
            # The program draws the shadow itself, so its window is larger than the visible plate; Wayfire draws no
            # frame around it.
            corner = (area.x + area.width - WIDTH - GAP, area.y + GAP)
            return [(view.content.x + SHADOW, view.content.y + SHADOW, view.sticky) for view in shown] == [
                (*corner, True)
            ]

        for leave in ("by Escape", "by another window"):
            status, _, errors, _ = desktop.ask_program()
            assert (status, errors) == (0, ""), f"the second start ended with {status}: {errors}"
            until(stands_in_the_corner, "the popover to be in the corner", 20.0, desktop.windows)
            until(lambda: desktop.connection.focused() == own_windows(desktop, product)[0].number,
                  "the popover to have the keyboard")
            desktop.save_picture(f"popover {leave}")
            if leave == "by Escape":
                desktop.keyboard.chord("Escape")
            else:
                desktop.connection.ask("window-rules/focus-view", id=editor.number)
            until(lambda: not own_windows(desktop, product), f"the popover to close {leave}", saw=desktop.windows)
            until(lambda: desktop.connection.focused() == editor.number, "the editor to have the keyboard")
            assert desktop.frame(editor.number) == before
            # A click that closes it must not open it again.
            product.until_at_rest()
