"""GNOME Shell on Wayland: every action on each kind of window, on both monitors; holders of keys; cleanup."""

import signal

from harness.gnome import EXTENSION, MONITORS, SHORTCUTS, Gnome
from harness.holders import COMMON_PURPOSES, until_holders
from harness.oracle import ACTIONS, corrected, expected, target
from harness.rect import Rect
from harness.waiting import throughout, until, until_equal

from . import case, case_for_each

# Where a person might have put a window: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(211, 173, 662, 503)

APPLICATIONS = {
    "mousepad": (["mousepad", "--disable-server"], {"GDK_BACKEND": "wayland"}),
    "featherpad": (["featherpad", "--standalone"], {"QT_QPA_PLATFORM": "wayland"}),
    "xterm": (["xterm", "-fa", "Monospace", "-fs", "10"], {}),
}


def open_application(desktop: Gnome, name: str):
    command, extra = APPLICATIONS[name]
    if name == "xterm":
        extra = desktop.x11_environment()
    return desktop.open(command, name, extra)


def on_monitor(rect: Rect, number: int) -> Rect:
    return rect._replace(x=rect.x + MONITORS[number].x, y=rect.y + MONITORS[number].y)


@case_for_each("desktop.gnome.actions", APPLICATIONS)
def every_action_puts_the_window_where_it_belongs(program, name):
    with Gnome(program, f"gnome.actions.{name}") as desktop:
        _, window = open_application(desktop, name)
        product = desktop.launch()
        product.until_status("Active")
        failures = []
        sizes = desktop.sizes_of_steps(window) if name == "xterm" else lambda asked: asked
        for number, area in enumerate(desktop.work_areas()):
            for action in ACTIONS:
                before = desktop.place(window, on_monitor(NATURAL, number))
                wanted = expected(action, before, area, sizes)
                for often in ("once", "twice"):
                    desktop.hands.press(action)
                    try:
                        desktop.holds_frame(window, wanted, f"frame after {action} {often} (from {before})")
                        product.until_at_rest()
                    except AssertionError as failure:
                        failures.append(str(failure))
        assert not failures, "\n".join(failures)


@case("desktop.gnome.maximized")
def a_maximized_or_tiled_window_is_released_first(program):
    with Gnome(program, "gnome.maximized") as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        for state in ("BOTH", "VERTICAL"):
            for action in ("rightHalf", "almostMaximize", "maximize"):
                desktop.place(window, NATURAL)
                desktop.see(f"maximize(one({window}), Meta.MaximizeFlags.{state})")
                until(lambda: desktop.see(f"isMaximized(one({window}))"), "the window to be maximized")
                before = desktop.at_rest(window)
                desktop.hands.press(action)
                wanted = expected(action, before, area, lambda size: size)
                desktop.holds_frame(window, wanted, f"{action} from maximized {state}")
                # A window that is in place already does not move.
                if wanted != before:
                    until(lambda: not desktop.see(f"isMaximized(one({window}))"), "the window to be released")


@case("desktop.gnome.tiled")
def windows_that_the_shell_maximized_or_tiled_stay_or_are_released(program):
    with Gnome(program, "gnome.tiled") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        for name in APPLICATIONS:
            process, window = open_application(desktop, name)
            sizes = desktop.sizes_of_steps(window) if name == "xterm" else lambda asked: asked
            for number, area in enumerate(desktop.work_areas()):
                half = Rect(area.x, area.y, area.width // 2, area.height)
                for shown, keys, actions in (
                    (area, ("Super", "Up"), ("maximize", "center", "leftHalf")),
                    (half, ("Super", "Left"), ("rightHalf", "center", "maximizeHeight", "maximize")),
                ):
                    for action in actions:
                        desktop.place(window, on_monitor(NATURAL, number))
                        desktop.hands.chord(*keys)
                        desktop.holds_frame(window, shown, f"{name} after {'+'.join(keys)}")
                        desktop.hands.press(action)
                        asked = target(action, shown, area)
                        stays = asked == shown
                        # A terminal fills the area when it is maximized, and counts in characters once it is released.
                        wanted = shown if stays else corrected(action, sizes(asked.size), asked, area)
                        what = f"{name} after {'+'.join(keys)} and {action} in {area}"
                        desktop.holds_frame(window, wanted, what)
                        product.until_at_rest()
                        # A program that handles its release late resizes the window back for a moment.
                        until_equal(lambda: desktop.at_rest(window), wanted, f"where {what} comes to rest")
                        is_held = desktop.see(f"isMaximized(one({window}))")
                        assert is_held == stays, f"{what} is maximized: {is_held}"
            desktop.session.processes.end(process)


@case("desktop.gnome.fullscreen")
def a_fullscreen_window_is_left_alone(program):
    with Gnome(program, "gnome.fullscreen") as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        desktop.see(f"one({window}).make_fullscreen()")
        desktop.holds_frame(window, MONITORS[0], "the fullscreen frame")
        desktop.hands.press("leftHalf")
        product.until_at_rest()
        assert desktop.at_rest(window) == MONITORS[0] and desktop.see(f"one({window}).is_fullscreen()")


@case("desktop.gnome.taken")
def keys_that_the_shell_holds_are_reported_and_left_to_it(program):
    with Gnome(program, "gnome.taken", keys_free=False) as desktop:
        _, window = open_application(desktop, "mousepad")
        # The shell itself names the holders of the keys, without the tool that prints settings.
        product = desktop.launch(environment={"PATH": "/nonexistent"})
        held = {"leftHalf", "rightHalf", "maximize", "maximizeHeight"}
        until(lambda: desktop.taken() == held, "the taken keys to be reported", saw=desktop.status)
        assert product.status.startswith("Some shortcuts are taken"), product.status
        until_holders(desktop.session, program, {action: ("GNOME", COMMON_PURPOSES[action]) for action in held})
        before = desktop.place(window, NATURAL)
        desktop.hands.press("center")
        area = desktop.work_areas()[0]
        desktop.holds_frame(window, expected("center", before, area, lambda size: size), "the centred frame")


def hold_left_half(desktop: Gnome, window: int) -> None:
    """The keys of the left half, held for longer than the shell waits before it repeats them, act once."""
    area = desktop.work_areas()[0]
    repeating = desktop.time_to_repeat()
    before = desktop.place(window, NATURAL)
    desktop.hands.hold("Control", "Alt", "Left")
    desktop.holds_frame(window, expected("leftHalf", before, area, lambda size: size), "the left half")
    desktop.place(window, NATURAL)
    throughout(2 * repeating, lambda: desktop.frame(window) == NATURAL, "left alone while the key was held",
               lambda: desktop.frame(window))
    desktop.hands.release("Control", "Alt", "Left")


@case("desktop.gnome.held")
def a_key_that_is_held_counts_once(program):
    with Gnome(program, "gnome.held") as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        hold_left_half(desktop, window)


@case_for_each("desktop.gnome.ends", ("SIGTERM", "SIGKILL"))
def nothing_is_left_in_the_shell_when_the_program_ends(program, name):
    with Gnome(program, f"gnome.ends.{name}") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        until(desktop.has_item, "the item in the top bar")
        keys = [("Control", "Alt", key) for key in SHORTCUTS.values()]
        # If the shell is busy when the program starts, the program repeats its request for them.
        until(lambda: all(desktop.is_bound(*key) for key in keys), "the keys to be held")
        desktop.session.processes.end(product.process, getattr(signal, name))
        until(lambda: not any(desktop.is_bound(*key) for key in keys), "the keys to be free")
        until(lambda: not desktop.has_item(), "the item to be gone")


@case("desktop.gnome.switched")
def the_extension_may_be_switched_off_and_on(program):
    with Gnome(program, "gnome.switched") as desktop:
        _, window = open_application(desktop, "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        desktop.switch_extension(False)
        until(lambda: not desktop.has_item(), "the item to be gone")
        until(lambda: not desktop.is_bound("Control", "Alt", "Left"), "the keys to be free")
        product.until_status("Waiting for permission", 20.0)
        desktop.switch_extension(True)
        product.until_status("Active", 20.0)
        until(desktop.has_item, "the item in the top bar")
        before = desktop.place(window, NATURAL)
        desktop.hands.press("rightHalf")
        desktop.holds_frame(window, expected("rightHalf", before, area, lambda size: size), "the right half")


@case("desktop.gnome.switched-shortly")
def a_key_that_another_client_took_meanwhile_becomes_known(program):
    with Gnome(program, "gnome.switched-shortly") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        # The shell disables it at once up to version 48, and in a later turn of its loop since.
        desktop.see(f"""(uuid => {{
            const inactive = 2;
            const meanwhile = () => {{
                global.display.grab_accelerator('<Control><Alt>c', 0);
                Main.extensionManager.enableExtension(uuid);
                return GLib.SOURCE_REMOVE;
            }};
            const reported = Main.extensionManager.connect('extension-state-changed', (manager, extension) => {{
                if (extension.uuid === uuid && extension.state === inactive) {{
                    manager.disconnect(reported);
                    GLib.idle_add(GLib.PRIORITY_HIGH, meanwhile);
                }}
            }});
            return Main.extensionManager.disableExtension(uuid);
        }})('{EXTENSION}')""")
        until(lambda: desktop.taken() == {"center"}, "the loss to be reported", 20.0, desktop.status)


@case("desktop.gnome.off-at-start")
def the_program_switches_the_extension_on_where_the_shell_has_it(program):
    with Gnome(program, "gnome.off-at-start", extension="off") as desktop:
        product = desktop.launch()
        product.until_status("Active", 20.0)
        until(desktop.has_item, "the item in the top bar")


@case("desktop.gnome.left-off")
def the_program_leaves_the_extension_off_that_its_user_switched_off(program):
    with Gnome(program, "gnome.left-off") as desktop:
        product = desktop.launch()
        product.until_status("Active", 20.0)
        product.terminate()
        desktop.switch_extension(False)
        product = desktop.launch()
        product.until_status("Waiting for permission")
        throughout(1.0, lambda: not desktop.has_item(), "no item in the top bar")
        assert "tessel@corvid.org" not in desktop.setting("org.gnome.shell", "enabled-extensions")
        desktop.switch_extension(True)
        product.until_status("Active", 20.0)


@case("desktop.gnome.absent-at-start")
def the_program_brings_its_extension_for_the_next_login(program):
    with Gnome(program, "gnome.absent-at-start", extension="absent") as desktop:
        product = desktop.launch()
        product.until_status("Waiting for permission")
        folder = desktop.session.home / ".local/share/gnome-shell/extensions/tessel@corvid.org"
        until(lambda: (folder / "extension.js").exists(), "the extension to be installed")
        assert (folder / "extension.js").read_text() == (desktop.extension_folder() / "extension.js").read_text()
        product.terminate()
        # Simulates the next login.
        desktop.end_shell()
        desktop.start_shell()
        desktop.launch().until_status("Active", 20.0)
        assert "tessel@corvid.org" in desktop.setting("org.gnome.shell", "enabled-extensions")


@case("desktop.gnome.shell-restarts")
def the_shell_may_end_and_come_back(program):
    with Gnome(program, "gnome.shell-restarts") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        desktop.end_shell()
        product.until_status("Waiting for permission", 20.0)
        desktop.start_shell()
        product.until_status("Active", 20.0)
        _, window = open_application(desktop, "mousepad")
        before = desktop.place(window, NATURAL)
        desktop.hands.press("leftHalf")
        area = desktop.work_areas()[0]
        desktop.holds_frame(window, expected("leftHalf", before, area, lambda size: size), "the left half")
