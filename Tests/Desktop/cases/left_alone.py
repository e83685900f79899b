"""Windows that no key may move: unfocused windows, the desktop itself, panels, minimized windows."""

from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.settling import settles_on
from harness.window_managers import WINDOW_MANAGERS

from . import case_for_each

NATURAL = Rect(311, 173, 762, 503)


def press_all(desktop: Desktop, product, windows: dict[str, int]) -> None:
    """Presses every shortcut; none of the windows moves."""
    before = {name: desktop.windows.frame(window) for name, window in windows.items()}
    for action in ACTIONS:
        desktop.press(product, action)
        after = {name: desktop.windows.frame(window) for name, window in windows.items()}
        assert after == before, f"{action} moved {before} to {after}"


@case_for_each("desktop.left-alone", WINDOW_MANAGERS)
def windows_that_no_key_may_move_stay(program, manager):
    with Desktop(program, name=f"left-alone.{manager}") as desktop:
        desktop.start_window_manager(manager)
        product = desktop.launch()
        product.until_status("Active")
        for scene in (
            without_a_focused_window_nothing_moves,
            a_minimized_window_keeps_its_place,
            a_dialog_moves_without_its_parent,
            the_desktop_and_a_panel_stay,
        ):
            scene(desktop, product)


def without_a_focused_window_nothing_moves(desktop: Desktop, product) -> None:
    shy = desktop.start(own_window("--no-focus"))
    desktop.wait_for(shy)
    press_all(desktop, product, {"a window that never takes the focus": shy.window})
    desktop.end(shy)


def a_minimized_window_keeps_its_place(desktop: Desktop, product) -> None:
    windows = desktop.windows
    editor = desktop.open(APPLICATIONS["mousepad"])
    windows.place(editor.window, NATURAL)
    frame = windows.frame(editor.window)
    windows.minimize(editor.window)
    for action in ACTIONS:
        desktop.press(product, action)
    windows.activate(editor.window)
    desktop.holds_frame(editor.window, frame, "frame after being brought back")
    desktop.end(editor)


def a_dialog_moves_without_its_parent(desktop: Desktop, product) -> None:
    windows = desktop.windows
    parent = desktop.open(APPLICATIONS["featherpad"])
    windows.place(parent.window, NATURAL)
    frame = windows.frame(parent.window)
    dialog = desktop.open(own_window(
        "--type", "DIALOG", "--fixed", "--title", "Dialog", "--transient-for", str(parent.window),
        "--place", "400", "300", "301", "203",
    ))
    # A size within its limits; some window managers give a fixed window any size that a pager requests.
    settles = settles_on(windows, dialog.window, APPLICATIONS["fixed"], desktop.manager)
    wanted = expected("rightHalf", windows.frame(dialog.window), desktop.visible_frame(), settles)
    desktop.press(product, "rightHalf")
    desktop.holds_frame(dialog.window, wanted, "the dialog's frame")
    assert windows.frame(parent.window) == frame, "the parent moved"
    assert windows.active() == dialog.window, "the dialog lost the focus"
    desktop.end(dialog)
    desktop.end(parent)


def the_desktop_and_a_panel_stay(desktop: Desktop, product) -> None:
    windows = desktop.windows
    wallpaper = desktop.start(
        own_window("--type", "DESKTOP", "--title", "Desktop", "--place", "0", "0", "1920", "1080")
    )
    desktop.wait_for(wallpaper)
    panel = desktop.start(
        own_window("--type", "DOCK", "--place", "0", "0", "1920", "32", "--strut-top", "32", "0", "1919")
    )
    desktop.wait_for(panel)
    both = {"the desktop": wallpaper.window, "the panel": panel.window}
    for one in (wallpaper, panel):
        windows.focus(one.window)
        press_all(desktop, product, both)
