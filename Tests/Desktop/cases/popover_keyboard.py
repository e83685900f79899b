"""The popover used with the keyboard alone, and read as a screen reader does."""

from harness.accessibility import Accessibility, Node
from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.popover import Popover
from harness.product import run_to_end
from harness.skipping import require
from harness.waiting import until, until_equal

from . import case, case_for_each
from .remote import status_of

MASTER_SWITCH = ("check box", "Tessel")
SHORTCUTS_TAB, APPS_TAB = ("page tab", "Shortcuts"), ("page tab", "Apps")
ADD = ("button menu", "Add app")
LOGIN = ("check box", "Open at login")
UPDATES, QUIT = ("push button", "Check for Updates"), ("push button", "Quit")


class Reader:
    """The opened popover, as a screen reader presents it."""

    def __init__(self, desktop: Desktop, environment=None):
        self.desktop = desktop
        self.accessibility = Accessibility(desktop)
        self.product = desktop.launch(environment=environment, ready=True)
        self.popover = Popover(desktop, self.product)

    def open(self) -> None:
        assert run_to_end(self.desktop.session, self.desktop.program)[0] == 0
        self.popover.until_open()
        self.until(lambda tree: any(node.role == "page tab" for node in tree.shown()), "the popover to be exposed")

    def until(self, condition, what: str) -> Node:
        return self.accessibility.until_tree(self.product.process.pid, condition, what)

    def focused(self, tree: Node) -> tuple[str, str] | None:
        """Role and name of the focused widget; None for no widget, or for several. A list has the focus together with
        its row."""
        has_it = lambda node: "focused" in node.states
        found = [node for node in tree.all() if has_it(node) and sum(map(has_it, node.all())) == 1]
        return (found[0].role, found[0].name) if len(found) == 1 else None

    def until_focused(self, *wanted: tuple[str, str]) -> None:
        self.until(lambda tree: self.focused(tree) in wanted, f"the keyboard at {wanted}")

    def until_node(self, role: str, name: str, *states: str, without: str = "") -> Node:
        def there(tree: Node) -> bool:
            return any(
                (node.role, node.name) == (role, name) and set(states) <= node.states and without not in node.states
                for node in tree.all()
            )

        return self.until(there, f"{role} {name!r} {states}, not {without!r}")

    def tab_to(self, wanted: tuple[str, str]) -> None:
        """Presses Tab until that control has the focus; each press moves to another control."""
        last = self.focused(self.until(lambda tree: True, "the tree"))
        for _ in range(12):
            if last == wanted:
                return
            self.desktop.keyboard.chord("Tab")
            before = last
            last = self.focused(
                self.until(lambda tree: self.focused(tree) not in (None, before), f"Tab to leave {before}")
            )
        raise AssertionError(f"Tab does not come to {wanted}")

    def choose(self, entry: str) -> None:
        """In the open menu: moves down to that entry and activates it."""
        tree = self.until(lambda tree: self.focused(tree) and self.focused(tree)[0] == "menu item", "an open menu")
        for _ in range(sum(node.role == "menu item" for node in tree.all())):
            if self.focused(tree) == ("menu item", entry):
                self.desktop.keyboard.chord("Return")
                return
            before = self.focused(tree)
            self.desktop.keyboard.chord("Down")
            tree = self.until(lambda tree: self.focused(tree) not in (None, before), f"Down to leave {before}")
        raise AssertionError(f"the menu has no {entry!r}")


def rules(desktop: Desktop) -> dict[str, str]:
    return status_of(desktop)["rules"]


@case("desktop.popover.tab-order")
def tab_goes_through_every_control_in_order_and_round(program):
    with Desktop(program, name="popover.tab-order") as desktop:
        desktop.start_window_manager("openbox")
        reader = Reader(desktop)
        reader.open()
        for tab, order in (
            (None, [MASTER_SWITCH, SHORTCUTS_TAB, LOGIN, UPDATES, QUIT, MASTER_SWITCH, SHORTCUTS_TAB]),
            (APPS_TAB, [ADD, LOGIN, UPDATES, QUIT, MASTER_SWITCH, APPS_TAB]),
        ):
            if tab:
                desktop.keyboard.chord("Right")
                reader.until_focused(tab)
                reader.until_node(*tab, "selected")
                reader.until_node(*SHORTCUTS_TAB, without="selected")
            for control in order:
                desktop.keyboard.chord("Tab")
                reader.until_focused(control)
            for control in reversed(order[:-1]):
                desktop.keyboard.chord("Shift", "Tab")
                reader.until_focused(control)
            desktop.keyboard.chord("Tab")
            reader.until_focused(order[1])
            reader.tab_to(order[-1])
        desktop.keyboard.chord("Left")
        reader.until_focused(SHORTCUTS_TAB)
        reader.until_node("label", "Left half", "showing")


@case("desktop.popover.switches")
def space_switches_the_program_and_its_start_off_and_on(program):
    with Desktop(program, name="popover.switches") as desktop:
        desktop.start_window_manager("openbox")
        reader = Reader(desktop)
        reader.product.until_status("Active")
        reader.open()
        reader.tab_to(MASTER_SWITCH)
        reader.until_node(*MASTER_SWITCH, "checked", "focused")
        desktop.keyboard.chord("Space")
        reader.product.until_status("Paused")
        reader.until_node(*MASTER_SWITCH, "focused", without="checked")
        reader.until_node("label", "Paused", "showing")
        assert not held_by_others(desktop.server.display), "keys are held while the program is switched off"
        desktop.keyboard.chord("Space")
        reader.product.until_status("Active")
        reader.until_node(*MASTER_SWITCH, "checked", "focused")
        assert held_by_others(desktop.server.display) == all_held()
        entry = desktop.session.home / ".config/autostart/org.corvid.Tessel.desktop"
        reader.tab_to(LOGIN)
        reader.until_node(*LOGIN, "focused", without="checked")
        desktop.keyboard.chord("Space")
        reader.until_node(*LOGIN, "checked", "focused")
        assert str(program) in entry.read_text(), entry.read_text()
        desktop.keyboard.chord("Space")
        reader.until_node(*LOGIN, "focused", without="checked")
        assert not entry.exists() or "Hidden=true" in entry.read_text(), entry.read_text()
        # A change from elsewhere is visible at the next opening.
        reader.popover.type("Space", "Escape")
        reader.popover.until_closed()
        entry.unlink()
        reader.open()
        reader.until_node(*LOGIN, without="checked")


@case_for_each("desktop.popover.rules", ("openbox", "xfwm4", "kwin_x11"))
def rules_are_added_changed_and_removed_with_the_keyboard(program, manager):
    require("mousepad", "mousepad")
    with Desktop(program, name=f"popover.rules.{manager}") as desktop:
        desktop.start_window_manager(manager)
        desktop.open(APPLICATIONS["xterm"])
        reader = Reader(desktop)
        reader.open()
        reader.tab_to(SHORTCUTS_TAB)
        desktop.keyboard.chord("Right")
        reader.until_focused(APPS_TAB)
        reader.tab_to(ADD)
        desktop.keyboard.chord("Return")
        reader.choose("XTerm")
        picker = ("button menu", "Action for XTerm")
        reader.until_node(*picker, "showing")
        assert rules(desktop) == {"debian-xterm": "maximize"}, rules(desktop)

        reader.tab_to(picker)
        desktop.keyboard.chord("Return")
        reader.choose("Center")
        reader.until_focused(picker)
        until_equal(lambda: rules(desktop), {"debian-xterm": "center"}, "the rules")

        reader.tab_to(ADD)
        desktop.keyboard.chord("Return")
        reader.choose("Choose from Applications…")
        until(lambda: desktop.windows.of_process(reader.product.process.pid), "the chooser to open")
        assert not reader.popover.is_open(), "the popover stays beside the chooser"
        reader.until_focused(("text", "Search applications"), ("entry", "Search applications"))
        reader.popover.type("M", "O", "U", "S", "E", "P")
        reader.until(
            lambda tree: [node.name for node in tree.shown() if node.role == "list item"] == ["Mousepad"],
            "the list to show what was searched",
        )
        desktop.keyboard.chord("Return")
        reader.popover.until_open()
        assert desktop.windows.of_process(reader.product.process.pid) is None, "the chooser is still there"
        reader.until_node("button menu", "Action for Mousepad", "showing")
        assert rules(desktop) == {"debian-xterm": "center", "org.xfce.mousepad": "maximize"}, rules(desktop)

        reader.tab_to(picker)
        desktop.keyboard.chord("Space")
        reader.choose("Remove")
        until_equal(lambda: list(rules(desktop)), ["org.xfce.mousepad"], "the rules")
        desktop.keyboard.chord("Control", "Q")
        assert reader.product.ended() == 0, reader.product.errors()
        assert reader.product.errors() == "", reader.product.errors()


ENGLISH = [
    "Tessel", "Tessel", "Tessel", "Active · 6 shortcuts · 0 apps", "Tessel", "Shortcuts", "Shortcuts", "Apps",
    "Left half", "Ctrl+Alt+←", "Right half", "Ctrl+Alt+→", "Maximize", "Ctrl+Alt+↑", "Almost maximize", "Ctrl+Alt+D",
    "Maximize height", "Ctrl+Alt+↓", "Center", "Ctrl+Alt+C", "Open at login", "Open at login", "Private by design",
    "No internet connection, no data collected", "Only moves windows, never reads them", "Check for Updates", "Quit",
]
GERMAN = [
    "Tessel", "Tessel", "Tessel", "Aktiv · 6 Tastenkürzel · 0 Apps", "Tessel", "Tastenkürzel", "Tastenkürzel", "Apps",
    "Linke Hälfte", "Strg+Alt+←", "Rechte Hälfte", "Strg+Alt+→", "Maximieren", "Strg+Alt+↑", "Fast maximieren",
    "Strg+Alt+D", "Höhe maximieren", "Strg+Alt+↓", "Zentrieren", "Strg+Alt+C", "Beim Anmelden öffnen",
    "Beim Anmelden öffnen", "Von Grund auf privat", "Kein Internet, keine Datenerfassung",
    "Verschiebt Fenster nur, liest nie ihren Inhalt", "Nach Updates suchen", "Beenden",
]
TEXTS = {"en": ENGLISH, "de": GERMAN}


@case_for_each("desktop.popover.accessible", TEXTS)
def everything_has_a_role_a_name_and_its_states(program, language):
    with Desktop(program, name=f"popover.accessible.{language}") as desktop:
        desktop.start_window_manager("openbox")
        reader = Reader(desktop, environment={"LANGUAGE": language, "LC_MESSAGES": "C.UTF-8"})
        assert run_to_end(desktop.session, program)[0] == 0
        reader.popover.until_open()
        tree = reader.until(lambda tree: len(tree.shown()) > 20, "the popover to be exposed")
        (window,) = tree.children
        names = [node.name for node in window.children[0].all() if "showing" in node.states]
        wanted = TEXTS[language]
        assert names == wanted[1:], f"{names}, not {wanted[1:]}"
        assert (window.role, window.name) == ("frame", wanted[0]), str(window)
        for node in tree.shown():
            if "focusable" in node.states:
                assert node.name and node.role not in ("unknown", "invalid", ""), str(node)
        states = {(node.role, node.name): node.states for node in tree.shown()}
        assert {"checked", "focusable"} <= states["check box", "Tessel"]
        assert "focusable" in states["check box", wanted[20]] and "checked" not in states["check box", wanted[20]]
        assert {"selected", "selectable"} <= states["page tab", wanted[6]]
        assert "selectable" in states["page tab", wanted[7]] and "selected" not in states["page tab", wanted[7]]
        helps = {node.name: node.description for node in tree.shown() if node.role in ("check box", "push button")}
        assert helps["Tessel"] == {"en": "Turn off", "de": "Ausschalten"}[language], helps
