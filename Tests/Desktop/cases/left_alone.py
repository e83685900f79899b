"""Windows that no key may move: those without the focus, the desktop itself, panels, the minimized."""

from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.waiting import until
from harness.window_managers import WINDOW_MANAGERS

from . import case_for_each


def press_all(desktop: Desktop, product, windows: dict[str, int]) -> None:
    """Presses every shortcut; none of the windows moves."""
    before = {name: desktop.windows.frame(window) for name, window in windows.items()}
    for action in ACTIONS:
        desktop.press(product, action)
        after = {name: desktop.windows.frame(window) for name, window in windows.items()}
        assert after == before, f"{action} moved {before} to {after}"


@case_for_each("desktop.unfocused", WINDOW_MANAGERS)
def without_a_focused_window_nothing_moves(program, manager):
    with Desktop(program, name=f"unfocused.{manager}") as desktop:
        desktop.start_window_manager(manager)
        shy = desktop.start(own_window("--no-focus"))
        desktop.wait_for(shy)
        product = desktop.launch()
        press_all(desktop, product, {"a window that never takes the focus": shy.window})


@case_for_each("desktop.minimized", WINDOW_MANAGERS)
def a_minimized_window_keeps_its_place(program, manager):
    with Desktop(program, name=f"minimized.{manager}") as desktop:
        desktop.start_window_manager(manager)
        editor = desktop.open(APPLICATIONS["mousepad"])
        windows = desktop.windows
        windows.place(editor.window, Rect(311, 173, 762, 503))
        frame = windows.frame(editor.window)
        product = desktop.launch()
        windows.minimize(editor.window)
        for action in ACTIONS:
            desktop.press(product, action)
        windows.activate(editor.window)
        desktop.holds_frame(editor.window, frame, "frame after being brought back")


@case_for_each("desktop.background", WINDOW_MANAGERS)
def the_desktop_and_a_panel_stay(program, manager):
    with Desktop(program, name=f"background.{manager}") as desktop:
        desktop.start_window_manager(manager)
        windows = desktop.windows
        wallpaper = desktop.start(
            own_window("--type", "DESKTOP", "--title", "Desktop", "--place", "0", "0", "1920", "1080")
        )
        desktop.wait_for(wallpaper)
        panel = desktop.start(
            own_window("--type", "DOCK", "--place", "0", "0", "1920", "32", "--strut-top", "32", "0", "1919")
        )
        desktop.wait_for(panel)
        product = desktop.launch()
        desktop.keyboard.click(900, 600)
        windows.focus(wallpaper.window)
        both = {"the desktop": wallpaper.window, "the panel": panel.window}
        press_all(desktop, product, both)
        windows.focus(panel.window)
        press_all(desktop, product, both)


@case_for_each("desktop.dialog", WINDOW_MANAGERS)
def a_dialog_moves_without_its_parent(program, manager):
    with Desktop(program, name=f"dialog.{manager}") as desktop:
        desktop.start_window_manager(manager)
        windows = desktop.windows
        parent = desktop.open(APPLICATIONS["featherpad"])
        windows.place(parent.window, Rect(311, 173, 762, 503))
        frame = windows.frame(parent.window)
        dialog = desktop.open(own_window(
            "--type", "DIALOG", "--fixed", "--title", "Dialog", "--transient-for", str(parent.window),
            "--place", "400", "300", "301", "203",
        ))
        size = windows.frame(dialog.window).size
        product = desktop.launch()
        desktop.press(product, "rightHalf")
        visible = desktop.visible_frame()
        wanted = expected("rightHalf", windows.frame(dialog.window), visible, lambda _: size)
        desktop.holds_frame(dialog.window, wanted, "the dialog's frame")
        assert windows.frame(parent.window) == frame, "the parent moved"
        until(lambda: windows.active() == dialog.window, "the dialog to keep the focus")
