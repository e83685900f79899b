"""GNOME Shell on Wayland: windows that it tiled or shows in fullscreen, and the extension in it."""

from harness.gnome import EXTENSION, MONITORS, Gnome
from harness.oracle import corrected, expected, target
from harness.rect import Rect
from harness.waiting import throughout, until, until_equal

from . import case
from .shells import APPLICATIONS, LOOK, NATURAL, on_monitor, open_application, sizes_of


@case("desktop.gnome.tiled")
def windows_that_the_shell_maximized_or_tiled_stay_or_are_released(program):
    with Gnome(program, "gnome.tiled") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        for name in APPLICATIONS:
            process, window = open_application(desktop, name)
            sizes = sizes_of(desktop, name, window)
            for number, area in enumerate(desktop.work_areas()):
                half = Rect(area.x, area.y, area.width // 2, area.height)
                for shown, keys, actions in (
                    (area, ("Super", "Up"), ("maximize", "center", "leftHalf")),
                    (half, ("Super", "Left"), ("rightHalf", "center", "maximizeHeight", "maximize")),
                ):
                    for action in actions:
                        desktop.place(window, on_monitor(desktop, NATURAL, number))
                        desktop.hands.chord(*keys)
                        desktop.holds_frame(window, shown, f"{name} after {'+'.join(keys)}")
                        desktop.hands.press(action)
                        asked = target(action, shown, area)
                        stays = asked == shown
                        # A terminal fills the area when it is maximized, and counts in characters once it is released.
                        wanted = shown if stays else corrected(action, sizes(asked.size), asked, area)
                        what = f"{name} after {'+'.join(keys)} and {action} in {area}"
                        desktop.holds_frame(window, wanted, what)
                        product.until_no_retry()
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
        product.until_status("Waiting for permission", LOOK)
        desktop.switch_extension(True)
        product.until_status("Active", LOOK)
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
        until(lambda: desktop.taken() == {"center"}, "the loss to be reported", LOOK, desktop.status)


@case("desktop.gnome.off-at-start")
def the_program_switches_the_extension_on_where_the_shell_has_it(program):
    with Gnome(program, "gnome.off-at-start", extension="off") as desktop:
        product = desktop.launch()
        product.until_status("Active", LOOK)
        until(desktop.has_item, "the item in the top bar")


@case("desktop.gnome.left-off")
def the_program_leaves_the_extension_off_that_its_user_switched_off(program):
    with Gnome(program, "gnome.left-off") as desktop:
        product = desktop.launch()
        product.until_status("Active", LOOK)
        product.terminate()
        desktop.switch_extension(False)
        product = desktop.launch()
        product.until_status("Waiting for permission")
        throughout(1.0, lambda: not desktop.has_item(), "no item in the top bar")
        assert "tessel@corvid.org" not in desktop.setting("org.gnome.shell", "enabled-extensions")
        desktop.switch_extension(True)
        product.until_status("Active", LOOK)


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
        desktop.launch().until_status("Active", LOOK)
        assert "tessel@corvid.org" in desktop.setting("org.gnome.shell", "enabled-extensions")
