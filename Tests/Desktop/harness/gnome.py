"""A headless GNOME Shell for one test, as in a user's session: without the shell's unsafe mode.

The tests read windows through a small extension of their own in the shell (gnome_eyes). Keys and pointer come from
Mutter's remote desktop, whose events take the path of real devices.
"""

import json
import re
import signal
import time
from pathlib import Path

from .gnome_extensions import EYES, form_of, install_eyes, put_extension
from .holders import COMMON_PURPOSES
from .private_desktop import PrivateDesktop
from .rect import Rect
from .session import Session
from .session_bus import Bus, Gio, GLib
from .skipping import Skipped, require
from .system_bus import start_system_bus
from .waiting import PATIENCE, STARTING, until, until_equal, until_unchanged

EXTENSION = "tessel@corvid.org"
MONITORS = (Rect(0, 0, 1600, 900), Rect(1600, 0, 1280, 1024))
TOP_BAR = 32
SHELL = ("org.gnome.Shell", "/org/gnome/Shell")

# Key codes of the kernel (linux/input-event-codes.h).
KEYS = {
    "Control": 29, "Alt": 56, "Left": 105, "Right": 106, "Up": 103, "Down": 108, "C": 46, "D": 32, "Escape": 1,
    "P": 25, "N": 49, "O": 24, "Q": 16, "W": 17, "Shift": 42, "Super": 125,
    "Page Up": 104, "Page Down": 109,
}
SHORTCUTS = {
    "leftHalf": "Left", "rightHalf": "Right", "center": "C", "maximize": "Up", "almostMaximize": "D",
    "maximizeHeight": "Down",
}


class Hands:
    """Keys and pointer of a remote desktop session."""

    def __init__(self, bus: Bus, pointer):
        self.bus, self.pointer = bus, pointer
        (self.path,) = self._call("/org/gnome/Mutter/RemoteDesktop", "CreateSession")
        self._session("Start")
        # The seat gets its keyboard with the first key. Programs know of no keyboard before, and miss that key.
        self.chord("Control")

    def _call(self, path: str, method: str, types: str = "()", *values):
        interface = "org.gnome.Mutter.RemoteDesktop" + ("" if path.endswith("RemoteDesktop") else ".Session")
        return self.bus.call("org.gnome.Mutter.RemoteDesktop", path, interface, method, types, *values)

    def _session(self, method: str, types: str = "()", *values) -> None:
        self._call(self.path, method, types, *values)

    def hold(self, *keys: str) -> None:
        for key in keys:
            self._session("NotifyKeyboardKeycode", "(ub)", KEYS[key], True)

    def release(self, *keys: str) -> None:
        for key in reversed(keys):
            self._session("NotifyKeyboardKeycode", "(ub)", KEYS[key], False)

    def chord(self, *keys: str) -> None:
        self.hold(*keys)
        self.release(*keys)

    def press(self, action: str) -> None:
        self.chord("Control", "Alt", SHORTCUTS[action])

    def point(self, x: int, y: int) -> None:
        def arrives() -> bool:
            now_x, now_y = self.pointer()
            self._session("NotifyPointerMotionRelative", "(dd)", float(x - now_x), float(y - now_y))
            return (now_x, now_y) == (x, y)

        until(arrives, f"the pointer to be at {x}, {y}", PATIENCE, self.pointer)

    def click(self, x: int, y: int, button: int = 0x110) -> None:
        self.point(x, y)
        for is_down in (True, False):
            self._session("NotifyPointerButton", "(ib)", button, is_down)


class Gnome(PrivateDesktop):
    """The counterpart of Desktop on an X server."""

    # The desktop's name in those of the cases, in the program's status, and in that of a holder of keys.
    key, backend, title = "gnome", "GNOME Shell", "GNOME"
    monitors = MONITORS
    purposes = COMMON_PURPOSES
    key_schema = "org.gnome.desktop.wm.keybindings"

    def __init__(self, program: Path, name: str, keys_free: bool = True, extension: str = "enabled"):
        super().__init__()
        self.program, self.name = program, name
        self.session = Session()
        self.bus = None
        self.hands = None
        try:
            self._require()
            self._prepare(keys_free, extension)
            self.start_shell()
        except BaseException:
            self.print_failure()
            self.close()
            raise

    # The session and the shell

    def _require(self) -> None:
        if Gio is None:
            raise Skipped("no module gi (Debian package python3-gi)")
        require("gnome-shell", "gnome-shell")
        require("gsettings", "libglib2.0-bin")

    def _prepare(self, keys_free: bool, extension: str) -> None:
        self.session.environment["WAYLAND_DISPLAY"] = "wayland-tessel"
        self._start_buses("GNOME", "gnome")
        self.form = form_of(self.session.run(["gnome-shell", "--version"]))
        install_eyes(self._place_of(EYES), self.form)
        put_extension(self.extension_folder(), self._place_of(EXTENSION), extension)
        enabled = [EYES] if extension in ("absent", "off") else [EYES, EXTENSION]
        self.change_setting("org.gnome.shell", "enabled-extensions", str(enabled))
        self.change_setting("org.gnome.shell", "welcome-dialog-last-shown-version", "'99'")
        # The pointer leaves a corner, in which GNOME 51 would open the overview.
        for key in ("enable-animations", "enable-hot-corners"):
            self.change_setting("org.gnome.desktop.interface", key, "false")
        if keys_free:
            self._free_keys()

    def _start_buses(self, current_desktop: str, session_desktop: str) -> None:
        """Starts the buses of a Wayland session of that desktop."""
        session = self.session
        environment = session.environment
        for variable in ("DISPLAY", "QT_QPA_PLATFORM", "GDK_BACKEND"):
            environment.pop(variable, None)
        environment |= {
            "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": current_desktop,
            "XDG_SESSION_DESKTOP": session_desktop,
            # Qt 6.11 logs a warning in a session without a portal, and this session has none.
            "QT_LOGGING_RULES": "qt.qpa.services.warning=false;qt.qpa.theme.gnome.warning=false",
        }
        session.start_bus()
        start_system_bus(session)
        self.bus = Bus(environment["DBUS_SESSION_BUS_ADDRESS"])

    def _free_keys(self) -> None:
        for direction in ("left", "right", "up", "down"):
            self.change_setting(self.key_schema, f"switch-to-workspace-{direction}", "[]")

    def extension_folder(self) -> Path:
        return self.program.parent.parent / "share/tessel/gnome-shell" / self.form

    def _place_of(self, extension: str) -> Path:
        return self.session.home / ".local/share/gnome-shell/extensions" / extension

    def change_setting(self, schema: str, key: str, value: str) -> None:
        """Changes a setting as its user does."""
        self.session.run(["gsettings", "set", schema, key, value])

    def start_shell(self) -> None:
        command = ["gnome-shell", "--headless", "--wayland-display", "wayland-tessel"]
        for monitor in self.monitors:
            command += ["--virtual-monitor", f"{monitor.width}x{monitor.height}"]
        self.shell = self.session.start(command, "gnome-shell")

        def answers() -> bool:
            assert self.shell.poll() is None, f"gnome-shell ended with {self.shell.returncode}"
            return self.bus.has("org.example.Eyes")

        until(answers, "GNOME Shell to be there", STARTING)
        until(lambda: not self.see("Main.layoutManager._startingUp"), "the shell's start to be over", STARTING)
        self.see("Main.overview.hide()")
        until(lambda: not self.see("Main.overview.visible"), "the desktop to be seen", PATIENCE,
              lambda: self.see("[Main.overview._shown, Main.overview._animationInProgress, Main.overview.visible]"))
        self.hands = Hands(self.bus, lambda: tuple(self.see("global.get_pointer().slice(0, 2)")))
        first, *others = self.monitors
        until_equal(self.work_areas, [first.grown(0, 0, -TOP_BAR, 0), *others], "work areas")

    def end_shell(self, number: int = signal.SIGKILL) -> None:
        self.session.processes.end(self.shell, number)
        self.hands = None

    def switch_extension(self, is_on: bool) -> None:
        """Enables or disables an extension as the Extensions application does."""
        method = "EnableExtension" if is_on else "DisableExtension"
        assert self.bus.call(*SHELL, "org.gnome.Shell.Extensions", method, "(s)", EXTENSION) == (True,)

    # The shell's state

    def see(self, expression: str):
        (answer,) = self.bus.call(
            "org.example.Eyes", "/org/example/Eyes", "org.example.Eyes", "Evaluate", "(s)", expression
        )
        return json.loads(answer)

    def windows_of(self, process_id: int) -> list[int]:
        return self.see(f"windows().filter(w => w.get_pid() === {process_id} && w.get_compositor_private().mapped"
                        " && w.get_frame_rect().width > 0).map(w => w.get_id())")

    def frame(self, window: int) -> Rect:
        return Rect(*self.see(f"rect(one({window}).get_frame_rect())"))

    def focused(self) -> int | None:
        return self.see("global.display.focus_window?.get_id()")

    def work_areas(self) -> list[Rect]:
        return [Rect(*area) for area in self.see(
            "[...Array(global.display.get_n_monitors()).keys()].map(i => "
            "rect(global.workspace_manager.get_active_workspace().get_work_area_for_monitor(i)))"
        )]

    def activate(self, window: int) -> None:
        self.see(f"Main.activateWindow(one({window}))")
        until_equal(self.focused, window, "the focused window")

    def place(self, window: int, rect: Rect) -> Rect:
        """Puts a window there as a person does with the mouse. Returns the frame at which it has come to rest."""
        # The shell treats a window with size steps as one whose corner is dragged, unless it is moved separately.
        ask = (f"(w => {{ w.unmaximize(Meta.MaximizeFlags.BOTH); w.move_frame(true, {rect.x}, {rect.y}); "
               f"w.move_resize_frame(true, {rect.x}, {rect.y}, {rect.width}, {rect.height}); }})(one({window}))")

        def is_there() -> bool:
            # A program that handles an earlier request late resizes the window back.
            if self.frame(window)[:2] != rect[:2]:
                self.see(ask)
            return self.frame(window)[:2] == rect[:2]

        self.see(ask)
        until(is_there, f"the window to come to {rect}", PATIENCE, lambda: self.frame(window))
        return self.at_rest(window)

    def at_rest(self, window: int) -> Rect:
        """The frame, after the shell has shown it unchanged for some frames."""
        return until_unchanged(lambda: self.frame(window), 10, "the window")

    def holds_frame(self, window: int, frame: Rect, what: str, seconds: float = 3.0) -> None:
        until_equal(lambda: self.frame(window), frame, what, seconds)

    def is_bound(self, *keys: str) -> bool:
        """Whether another client holds the combination: then nobody else can take it."""
        modifiers = "".join(f"<{key}>" for key in keys[:-1])
        return self.see(
            f"(action => {{ if (action) global.display.ungrab_accelerator(action); return !action; }})"
            f"(global.display.grab_accelerator('{modifiers}{keys[-1]}', 0))"
        )

    def sizes_of_steps(self, window: int):
        """Maps a requested frame size to the resulting one, for an X11 window whose size is in rows and columns."""
        environment = {**self.session.environment, **self.x11_environment()}
        tree = self.session.processes.run(["xwininfo", "-root", "-tree"], environment)
        (xid,) = re.findall(r"(0x[0-9a-f]+) .*XTerm", tree)
        hints = self.session.processes.run(["xprop", "-id", xid, "WM_NORMAL_HINTS"], environment)
        step, base = (
            tuple(map(int, re.search(rf"{what}: (\d+) by (\d+)", hints).groups()))
            for what in ("resize increment", "base size")
        )
        geometry = self.session.processes.run(["xwininfo", "-id", xid], environment)
        client = [int(re.search(rf"{side}: (\d+)", geometry)[1]) for side in ("Width", "Height")]
        around = [frame - inner for frame, inner in zip(self.frame(window).size, client)]

        def rounded_down(asked: tuple[int, int]) -> tuple[int, int]:
            return tuple(
                outside + least + (size - outside - least) // increment * increment
                for size, outside, least, increment in zip(asked, around, base, step)
            )

        return rounded_down

    def time_to_repeat(self) -> float:
        """Seconds that a key must be held until the shell repeats it, measured with a key of the tests' own."""
        self.see("globalThis.repeats = {count: 0, action: global.display.grab_accelerator('<Control><Alt>p', 0)}, "
                 "Main.wm.allowKeybinding?.(Meta.external_binding_name_for_action(repeats.action), -1), "
                 "repeats.signal = global.display.connect('accelerator-activated', "
                 "(_display, action) => { repeats.count += action === repeats.action; })")
        began = time.monotonic()
        self.hands.hold("Control", "Alt", "P")
        until(lambda: self.see("repeats.count") > 1, "a held key to repeat")
        took = time.monotonic() - began
        self.hands.release("Control", "Alt", "P")
        self.see("[global.display.disconnect(repeats.signal), global.display.ungrab_accelerator(repeats.action)]")
        return took

    def has_part(self) -> bool:
        """Whether a part of the program is in the shell: the item in the top bar."""
        return self.has_item()

    def busy_when_a_window_appears(self, seconds: float) -> None:
        """Keeps the shell busy for that long from the moment on at which the next window of an X11 program is shown."""
        self.see(f"""(() => {{
            const shown = global.window_manager.connect('map', manager => {{
                manager.disconnect(shown);
                GLib.idle_add(GLib.PRIORITY_HIGH, () => {{
                    const end = GLib.get_monotonic_time() + {int(seconds * 1e6)};
                    while (GLib.get_monotonic_time() < end);
                    return GLib.SOURCE_REMOVE;
                }});
            }});
        }})()""")

    def has_item(self) -> bool:
        """Whether it is shown at its position."""
        return self.see("(item => item?.mapped && item.has_allocation())(Main.panel.statusArea.tessel)")

    def item_at_rest(self) -> Rect:
        """Its frame once the top bar has stopped rearranging its items."""
        return until_unchanged(self.item_frame, 10, "the item in the top bar", STARTING)

    def item_frame(self) -> Rect:
        x, y, width, height = self.see(
            "(e => [e.origin.x, e.origin.y, e.size.width, e.size.height])"
            "(Main.panel.statusArea.tessel.get_transformed_extents())"
        )
        return Rect(round(x), round(y), round(width), round(height))

    # Applications and the program

    def x11_environment(self) -> dict[str, str]:
        """The environment that X11 programs need here."""
        return {name: self.see(f"GLib.getenv('{name}')") for name in ("DISPLAY", "XAUTHORITY")}

    def status(self) -> dict:
        """The program's answer to a command."""
        return json.loads(self.session.run([str(self.program), "--status", "--json"]))

    def taken(self) -> set[str]:
        """The actions whose keys another program holds, by the program's own report."""
        return {shortcut["action"] for shortcut in self.status()["shortcuts"] if shortcut["state"] == "taken"}

    def setting(self, schema: str, key: str) -> str:
        return self.session.run(["gsettings", "get", schema, key])

    def open(self, command: list[str], log: str, extra: dict[str, str] | None = None):
        """Starts an application. Returns its process and its window, which has the focus."""
        process = self.session.start(command, log, extra)

        def appeared():
            assert process.poll() is None, f"{log} ended with {process.returncode}"
            return self.windows_of(process.pid)

        (window,) = until(appeared, f"a window of {log}", STARTING)
        self.activate(window)
        return process, window

    # End

    def check(self) -> None:
        """Checks that the shell has logged no fault of the extension."""
        log = (self.session.logs / "gnome-shell.log").read_text(errors="replace")
        complaints = [line for line in log.splitlines() if "JS ERROR" in line or EXTENSION in line]
        assert not complaints, "\n".join(complaints)

    def close_connections(self) -> None:
        if self.bus:
            try:
                self.bus.close()
            except GLib.Error:
                pass
