"""A Cinnamon on Wayland for one test, nested in a virtual X server, because it does not run without a screen.

The tests read windows through Cinnamon's own evaluation of scripts, in scripts of their own. The X server presses keys
and moves the pointer (XTEST): for Cinnamon they come from the devices of the display on which it is nested.
"""

import json
import re
import signal
from pathlib import Path

from Xlib import X

from .gnome import Gnome
from .holders import COMMON_PURPOSES
from .keyboard import Keyboard
from .picture import screen
from .rect import Rect
from .servers import Server
from .session_bus import Gio, GLib
from .skipping import Skipped, require
from .tray import folders_with_icons, icon_in
from .waiting import STARTING, until, until_equal, until_unchanged

CINNAMON = ("org.Cinnamon", "/org/Cinnamon")
WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
# Cinnamon's number for a session that is ready (js/ui/main.js, RunState).
RUNNING = 2
MONITOR = Rect(0, 0, 1280, 720)
PANEL = 40
# The least distance of an icon from the panel's edges.
EDGE = 4

SCOPE = """
    const {Clutter, GLib, Gio, Meta} = imports.gi;
    const Main = imports.ui.main;
    const windows = () => global.get_window_actors().map(actor => actor.meta_window);
    const one = id => windows().find(window => window.get_id() === id);
    const rect = r => [r.x, r.y, r.width, r.height];
    const isMaximized = window => window.get_maximized() !== 0;
    const maximize = (window, flags) => window.maximize(flags);
"""


class Hands(Keyboard):
    """Keys and pointer of the X server, with the keyboard's focus in the window that is Cinnamon's whole display."""

    def __init__(self, display: str):
        super().__init__(display)
        root = self.connection.screen().root
        shown = until(lambda: [each for each in root.query_tree().children
                               if each.get_attributes().map_state == X.IsViewable], "the window of Cinnamon")
        shown[0].set_input_focus(X.RevertToParent, X.CurrentTime)
        self.delivered()


class Cinnamon(Gnome):
    """The counterpart of Gnome: Cinnamon descends from the same shell."""

    key, backend, title = "cinnamon", "Cinnamon", "Cinnamon"
    monitors = (MONITOR, MONITOR._replace(x=MONITOR.width))
    # Cinnamon's own names for two of its views.
    purposes = COMMON_PURPOSES | {"maximize": "shows all workspaces", "maximizeHeight": "shows all windows"}
    key_schema = "org.cinnamon.desktop.keybindings.wm"

    def __init__(self, program: Path, name: str, keys_free: bool = True, has_icons: bool = False):
        """`has_icons`: the panel has the program's icons by their names."""
        self.has_icons = has_icons
        super().__init__(program, name, keys_free)

    def _require(self) -> None:
        if Gio is None:
            raise Skipped("no module gi (Debian package python3-gi)")
        require("cinnamon", "cinnamon")
        require("gsettings", "libglib2.0-bin")
        version = re.search(r"(\d+)\.(\d+)", self.session.run(["cinnamon", "--version"]))
        if version is None or int(version[1]) < 6:
            raise Skipped(f"this Cinnamon has no Wayland session: {version and version[0]}")

    def _prepare(self, keys_free: bool, extension: str) -> None:
        session = self.session
        total = sum(monitor.width for monitor in self.monitors)
        self.server = Server(session, ["Xvfb", "-screen", "0", f"{total}x{MONITOR.height}x24"])
        if self.has_icons:
            session.environment["XDG_DATA_DIRS"] = folders_with_icons(self.program)
        self._start_buses("X-Cinnamon", "cinnamon")
        for effect in ("startup-animation", "desktop-effects", "desktop-effects-workspace"):
            self.change_setting("org.cinnamon", effect, "false")
        if keys_free:
            self._free_keys()

    def start_shell(self) -> None:
        command = ["cinnamon", "--nested", "--wayland"]
        simulated = {
            "DEBUG_NUM_DUMMY_MONITORS": str(len(self.monitors)),
            "DEBUG_DUMMY_MODE_SPECS": f"{MONITOR.width}x{MONITOR.height}",
        }
        # Cinnamon 6.6 has another prefix than 6.4.
        variables = {f"{prefix}_{name}": value for prefix in ("MUTTER", "MUFFIN") for name, value in simulated.items()}
        self.shell = self.session.start(command, "cinnamon", {"DISPLAY": self.server.display, **variables})

        def runs() -> bool:
            assert self.shell.poll() is None, f"cinnamon ended with {self.shell.returncode}"
            return self.bus.has(CINNAMON[0]) and self._run_state() == RUNNING

        until(runs, "Cinnamon to be there", STARTING)
        self.session.environment["WAYLAND_DISPLAY"] = self.see("GLib.getenv('WAYLAND_DISPLAY')")
        self.hands = Hands(self.server.display)
        first, *others = self.monitors
        until_equal(self.work_areas, [first.grown(0, 0, 0, -PANEL), *others], "work areas")

    def _run_state(self) -> int:
        try:
            return self.bus.call(*CINNAMON, "org.Cinnamon", "GetRunState")[0]
        except GLib.Error:
            # It has its name before it has its object.
            return -1

    def end_shell(self, number: int = signal.SIGKILL) -> None:
        self.hands.close()
        super().end_shell(number)

    # The shell's state

    def see(self, expression: str):
        script = f"(() => {{ {SCOPE} return ({expression}); }})()"
        is_done, answer = self.bus.call(*CINNAMON, "org.Cinnamon", "Eval", "(s)", script)
        assert is_done, f"{expression}: {answer}"
        return json.loads(answer) if answer else None

    def windows_of(self, process_id: int) -> list[int]:
        return self.see(f"windows().filter(w => w.get_client_pid() === {process_id} && w.get_compositor_private().mapped"
                        " && w.get_frame_rect().width > 0).map(w => w.get_id())")

    def work_areas(self) -> list[Rect]:
        return [Rect(*area) for area in self.see(
            "[...Array(global.display.get_n_monitors()).keys()].map(i => "
            "rect(global.workspace_manager.get_active_workspace().get_work_area_for_monitor(i)))"
        )]

    def workspace(self) -> int:
        return self.see("global.workspace_manager.get_active_workspace_index()")

    def has_part(self) -> bool:
        """Whether the program's object is in Cinnamon."""
        (description,) = self.bus.call(
            CINNAMON[0], "/org/corvid/Tessel/Windows", "org.freedesktop.DBus.Introspectable", "Introspect")
        return "org.corvid.Tessel.Windows1" in description

    # The panel

    def items(self) -> list[str]:
        """The status items that the panel's watcher knows."""
        (items,) = self.bus.call(WATCHER, WATCHER_PATH, "org.freedesktop.DBus.Properties", "Get", "(ss)", WATCHER,
                                 "RegisteredStatusNotifierItems")
        return items

    def has_item(self) -> bool:
        return self.bus.has(WATCHER) and bool(self.items()) and self.item_frame() is not None

    def item_frame(self) -> Rect | None:
        """The icon of the first status item in the panel (the applet xapp-status)."""
        frame = self.see("""(applet => {
            const icon = applet && Object.values(applet.statusIcons)[0];
            if (!icon?.actor.mapped)
                return null;
            const [x, y] = icon.actor.get_transformed_position();
            const [width, height] = icon.actor.get_transformed_size();
            return [x, y, width, height].map(Math.round);
        })(imports.ui.appletManager.getRunningInstancesForUuid('xapp-status@cinnamon.org')[0])""")
        return frame and Rect(*frame)

    def shown_icon(self) -> str | None:
        """The program's icon at the place of the item."""
        frame = self.item_frame()
        if not frame:
            return None
        # The panel's border is not part of the item.
        inside = frame.grown(*[-EDGE] * 4)
        if min(inside.size) <= 0:
            return None
        # Of a symbolic icon of 16 pixels, the edges are a large part; the icons differ from each other by 80 and more.
        return icon_in(screen(self.server.display, inside), self.program, tolerable=65)

    def item_at_rest(self) -> Rect:
        """Its frame once the panel has stopped rearranging its icons."""
        return until_unchanged(self.item_frame, 30, "the item in the panel", STARTING)

    def check(self) -> None:
        """Checks that Cinnamon has logged no fault of the program's code."""
        log = (self.session.logs / "cinnamon.log").read_text(errors="replace")
        # In a trace, evaluated code has this in the place of its file. Cinnamon logs faults of its own views, too.
        complaints = [line for line in log.splitlines() if "> eval" in line]
        assert not complaints, "\n".join(complaints)
