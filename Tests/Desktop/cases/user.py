"""A first day with the program, from its start to its end, by user alone: only clicks and keys."""

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.rect import Rect
from harness.skipping import require
from harness.tray import start_panel, until_icon
from harness.waiting import until, until_equal

from . import case
from .popover import ACTIVE, XFCE, click_item
from .popover_keyboard import APPS_TAB, ADD, LOGIN, MASTER_SWITCH, QUIT, Reader, rules
from .rules import is_placed, launch

EDITOR = "org.xfce.mousepad"
PICKER = ("button menu", "Action for Mousepad")
PAUSED = "rectangle.split.2x1"


class User(Reader):
    """Opens the popover at its item, and clicks on its contents."""

    def open(self) -> None:
        click_item(self.desktop)
        self.popover.until_open()

    def click(self, role: str, name: str) -> None:
        """Clicks the middle of the control, once it has come to rest there."""
        seen: list[Rect] = []

        def rests() -> bool:
            tree = self.accessibility.tree(self.product.process.pid)
            found = [node for node in tree.shown() if (node.role, node.name) == (role, name)] if tree else []
            seen.append(self.accessibility.extents(found[0]) if found else Rect(0, 0, 0, 0))
            return len(seen) > 1 and seen[-1] == seen[-2] and seen[-1].width > 0

        until(rests, f"{role} {name!r} to click", saw=lambda: f"{seen[-1:]} in\n{self._tree()}")
        box = seen[-1]
        self.desktop.keyboard.click(box.x + box.width // 2, box.y + box.height // 2)

    def _tree(self) -> str:
        tree = self.accessibility.tree(self.product.process.pid)
        return "\n".join(map(str, tree.shown())) if tree else "no tree"

    def close(self) -> None:
        click_item(self.desktop)
        self.popover.until_closed()


@case("desktop.as-its-user")
def a_day_with_the_program(program):
    require("mousepad", "mousepad")
    with Desktop(program, name="as-its-user") as desktop:
        desktop.start_window_manager("xfwm4")
        start_panel(desktop, XFCE)
        user = User(desktop)
        user.product.until_status("Active")
        until_icon(desktop, XFCE, ACTIVE)
        editor = launch(desktop, APPLICATIONS["mousepad"])
        before = desktop.windows.frame(editor.window)

        # Off and on.
        user.open()
        user.click(*MASTER_SWITCH)
        user.product.until_status("Paused")
        until_icon(desktop, XFCE, PAUSED)
        assert not held_by_others(desktop.server.display), "keys are held while the program is switched off"
        user.click(*MASTER_SWITCH)
        user.product.until_status("Active")
        assert held_by_others(desktop.server.display) == all_held()

        # A rule for an open application, checked at its next launch.
        user.click(*APPS_TAB)
        user.click(*ADD)
        user.click("menu item", "Mousepad")
        until_equal(lambda: rules(desktop), {EDITOR: "maximize"}, "the rules")
        user.close()
        assert desktop.windows.frame(editor.window) == before, "a rule moved a window that was open already"
        desktop.end(editor)
        editor = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, editor, "maximize", desktop.windows.work_area())
        desktop.end(editor)

        # The same application is to be centered.
        user.open()
        user.click(*PICKER)
        user.click("menu item", "Center")
        until_equal(lambda: rules(desktop), {EDITOR: "center"}, "the rules")
        user.close()
        editor = launch(desktop, APPLICATIONS["mousepad"])
        is_placed(desktop, editor, "center", desktop.windows.work_area())
        # A key places a window as well, once the rule looks no more whether its application moves it back.
        user.product.until_no_retry()
        desktop.windows.activate(editor.window)
        desktop.press(user.product, "leftHalf")
        area = desktop.windows.work_area()
        desktop.holds_frame(editor.window, Rect(area.x, area.y, area.width // 2, area.height), "the left half")

        # The rule is removed.
        user.open()
        user.click(*PICKER)
        user.click("menu item", "Remove")
        until_equal(lambda: rules(desktop), {}, "the rules")

        # Opening at login.
        entry = desktop.session.home / ".config/autostart/org.corvid.Tessel.desktop"
        user.click(*LOGIN)
        user.until_node(*LOGIN, "checked")
        assert str(program) in entry.read_text(), entry.read_text()
        user.click(*LOGIN)
        user.until_node(*LOGIN, without="checked")
        assert not entry.exists() or "Hidden=true" in entry.read_text(), entry.read_text()

        user.click(*QUIT)
        assert user.product.ended() == 0, user.product.errors()
        assert user.product.errors() == "", user.product.errors()
        until_icon(desktop, XFCE, None)
        assert not held_by_others(desktop.server.display), "a grab outlived the program"
        assert desktop.session.settings_of(desktop.session.home / ".config/tessel/preferences.plist").get("rules") in (
            None, {}
        )
