"""KWin on Wayland without a screen: its session, a keyboard that KWin treats as real, and our own script in KWin."""

import json
import os
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

from .private_desktop import PrivateDesktop
from .product import Product
from .rect import Rect
from .session import Session
from .skipping import Skipped, require
from .waiting import PATIENCE, STARTING, until, until_equal

try:
    from gi.repository import Gio, GLib
except ImportError:
    Gio = None

WIDTH, HEIGHT = 1600, 900
# The two screens stand side by side.
SCREENS = (Rect(0, 0, WIDTH, HEIGHT), Rect(WIDTH, 0, WIDTH, HEIGHT))

# Keys by position, as evdev numbers them.
KEYS = {
    "Control": 29, "Alt": 56, "Left": 105, "Right": 106, "Up": 103, "Down": 108, "C": 46, "D": 32, "Escape": 1,
    "CapsLock": 58, "NumLock": 69, "N": 49, "Shift": 42,
}
SHORTCUTS = {
    "leftHalf": "Left", "rightHalf": "Right", "center": "C", "maximize": "Up", "almostMaximize": "D",
    "maximizeHeight": "Down",
}

KWIN = ("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting")
ACCEL = ("org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel")
# Variables for the session's programs, not for KWin: KWin's own display, and the mark of a whole Plasma session. That
# mark makes Qt 6 use a theme of its own where Plasma is missing, and KWin 6 crashes with that theme.
NOT_OF_KWIN = ("WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM", "KDE_FULL_SESSION")
COMPONENT = "org.corvid.Tessel"
OUR_SCRIPT = "org.corvid.Tessel"

EYES_NAME = "org.example.TesselEyes"
EYES = Gio and Gio.DBusNodeInfo.new_for_xml(
    f"<node><interface name='{EYES_NAME}'><method name='Saw'><arg type='s' direction='in'/></method></interface></node>"
)
# KWin runs this for each reading of its windows, independently of the program's own script.
LOOK = """
const six = typeof workspace.windowList === "function";
const windows = six ? workspace.windowList() : workspace.clientList();
const active = six ? workspace.activeWindow : workspace.activeClient;
function find(id) { return windows.find((each) => String(each.internalId) === id); }
%s
callDBus("org.example.TesselEyes", "/", "org.example.TesselEyes", "Saw", JSON.stringify({
    pointer: workspace.cursorPos, is_six: six,
    windows: windows.map((w) => ({
        id: String(w.internalId), process: w.pid, title: String(w.caption), name: String(w.resourceClass),
        x: w.frameGeometry.x, y: w.frameGeometry.y, width: w.frameGeometry.width, height: w.frameGeometry.height,
        smallest: [w.minSize.width + (w.clientGeometry ? w.frameGeometry.width - w.clientGeometry.width : 0),
                   w.minSize.height + (w.clientGeometry ? w.frameGeometry.height - w.clientGeometry.height : 0)],
        is_active: w === active, is_above: w.keepAbove, is_skipped: w.skipTaskbar && w.skipPager && w.skipSwitcher,
        is_everywhere: w.onAllDesktops, is_bare: w.noBorder, is_full: w.fullScreen,
        is_popup: w.popupWindow || w.dock || w.desktopWindow
    }))
}));
"""


@dataclass(frozen=True)
class SeenWindow:
    id: str
    process: int
    title: str
    name: str
    x: float
    y: float
    width: float
    height: float
    # With its frame, except in KWin 5, which does not report the frame's width.
    smallest: list[float]
    is_active: bool
    is_above: bool
    is_skipped: bool
    is_everywhere: bool
    is_bare: bool
    is_full: bool
    is_popup: bool

    @property
    def frame(self) -> Rect:
        return Rect(*map(round, (self.x, self.y, self.width, self.height)))


class Bus:
    """Another client of the session's message bus."""

    def __init__(self, address: str):
        flags = Gio.DBusConnectionFlags
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
        )

    def call(self, place, method: str, signature: str = "()", *arguments):
        name, path, interface = place
        values = GLib.Variant(signature, arguments)
        reply = self.connection.call_sync(
            name, path, interface, method, values, None, Gio.DBusCallFlags.NO_AUTO_START, int(1000 * PATIENCE), None
        )
        return reply.unpack()

    def has_owner(self, name: str) -> bool:
        bus = "org.freedesktop.DBus"
        return self.call((bus, "/org/freedesktop/DBus", bus), "NameHasOwner", "(s)", name)[0]


class Eyes:
    """Reads KWin's state through scripts that KWin runs for the tests."""

    def __init__(self, bus: Bus, folder: Path):
        self.bus = bus
        self.folder = folder
        self.count = 0
        self.seen: list[str] = []
        bus.connection.register_object("/", EYES.interfaces[0], self._saw, None, None)
        bus.call(("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"), "RequestName", "(su)",
                 EYES_NAME, 0)

    def _saw(self, _connection, _sender, _path, _interface, _method, values, invocation) -> None:
        self.seen.append(values.unpack()[0])
        invocation.return_value(None)

    def run(self, file: Path, name: str) -> None:
        self.bus.call(KWIN, "loadScript", "(ss)", str(file), name)
        self.bus.call(KWIN, "start")

    def look(self, first: str = "") -> dict:
        """The windows, after KWin has run the script `first`."""
        self.count += 1
        name = f"look-{self.count}"
        file = self.folder / f"{name}.js"
        file.write_text(LOOK % first)
        self.seen.clear()
        self.run(file, name)

        def reported() -> bool:
            while GLib.MainContext.default().iteration(False):
                pass
            return bool(self.seen)

        until(reported, "KWin to run a script")
        self.bus.call(KWIN, "unloadScript", "(s)", name)
        return json.loads(self.seen[0])

    def windows(self, first: str = "") -> list[SeenWindow]:
        return [SeenWindow(**each) for each in self.look(first)["windows"]]

    def of_process(self, process_id: int) -> list[SeenWindow]:
        return [each for each in self.windows() if each.process == process_id and not each.is_popup]

    def find(self, window: str) -> SeenWindow:
        found = [each for each in self.windows() if each.id == window]
        assert found, f"the window {window} is gone"
        return found[0]

    def frame(self, window: str) -> Rect:
        return self.find(window).frame

    def active(self) -> str | None:
        return next((each.id for each in self.windows() if each.is_active), None)

    def place(self, window: str, frame: Rect, settles=lambda size: size, leeway: int = 0) -> None:
        """Moves a window there as its user might, and waits until it has settled on a size."""
        self.windows(
            f'find("{window}").setMaximize(false, false);'
            f' find("{window}").frameGeometry = {{x: {frame.x}, y: {frame.y}, width: {frame.width},'
            f' height: {frame.height}}};'
        )
        settled = Rect(frame.x, frame.y, *settles(frame.size))
        until(lambda: self.frame(window).is_near(settled, leeway), f"the window's frame to be {settled}",
              saw=lambda: self.frame(window))

    def activate(self, window: str) -> None:
        self.windows(f'six ? workspace.activeWindow = find("{window}") : workspace.activeClient = find("{window}");')
        until_equal(self.active, window, "the active window")


class FakeKeyboard:
    """Keys that KWin accepts as pressed."""

    def __init__(self, session: Session):
        self.session = session
        program = os.environ.get("TESSEL_FAKE_INPUT")
        if not program:
            raise Skipped("built without libwayland-dev, libwayland-bin and plasma-wayland-protocols")
        self.process = session.start(
            [program], "keyboard", stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1
        )

    def _do(self, line: str) -> None:
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline()
        assert answer == "done\n", f"the keyboard answered {answer!r} to {line}"

    def hold(self, *keys: str) -> None:
        for key in keys:
            self._do(f"press {KEYS[key]}")

    def release(self, *keys: str) -> None:
        for key in reversed(keys):
            self._do(f"release {KEYS[key]}")

    def chord(self, *keys: str) -> None:
        self.hold(*keys)
        self.release(*keys)

    def press(self, action: str) -> None:
        self.chord("Control", "Alt", SHORTCUTS[action])

    def close(self) -> None:
        self.session.processes.end(self.process)

    def point(self, x: float, y: float) -> None:
        self._do(f"point {x} {y}")


@dataclass
class Client:
    process: object
    window: str
    log: str


class KWinDesktop(PrivateDesktop):
    """A KWin session with two screens. The test starts applications and the program under test."""

    def __init__(self, program: Path, layout: str = "us", has_keyboard: bool = True):
        if Gio is None:
            raise Skipped("no module gi (Debian package python3-gi)")
        require("kwin_wayland", "kwin-wayland")
        require("Xwayland", "xwayland")
        super().__init__()
        self.program = program
        self.session = Session()
        self.kwin = None
        try:
            self._enter_session()
            self.session.configure(".config/kxkbrc", f"[Layout]\nUse=true\nLayoutList={layout}\n")
            self.start_kwin()
            self.bus = Bus(self.session.environment["DBUS_SESSION_BUS_ADDRESS"])
            self.eyes = Eyes(self.bus, self.session.directory)
            self.keyboard = FakeKeyboard(self.session) if has_keyboard else None
        except BaseException:
            self.close()
            raise

    def _enter_session(self) -> None:
        environment = self.session.environment
        environment |= {
            "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true",
            "KDE_SESSION_VERSION": "5", "QT_QPA_PLATFORM": "wayland", "GDK_BACKEND": "wayland", "KWIN_COMPOSE": "Q",
            "WAYLAND_DISPLAY": "wayland-test", "QT_FORCE_STDERR_LOGGING": "1",
            "QT_LOGGING_RULES": f"js=true;{environment['QT_LOGGING_RULES']}",
        }
        self.session.start_bus()

    def start_kwin(self) -> None:
        """Starts it and waits until it shows windows of both kinds."""
        # The packaged file has a capability that a container may forbid; a copy has none.
        binary = self.session.directory / "kwin_wayland"
        if not binary.exists():
            shutil.copyfile("/usr/bin/kwin_wayland", binary)
            binary.chmod(0o755)
        reported = self.session.directory / "display"
        reported.unlink(missing_ok=True)
        script = self.session.directory / "send-display"
        script.write_text(f'#!/bin/sh\necho "$DISPLAY" >{reported}.new\nmv {reported}.new {reported}\nexec sleep infinity\n')
        script.chmod(0o755)
        environment = {name: value for name, value in self.session.environment.items()
                       if name not in NOT_OF_KWIN}
        # KWin accepts keys from a client only if its check of the client is off.
        environment["KWIN_WAYLAND_NO_PERMISSION_CHECKS"] = "1"
        self.kwin = self.session.processes.start(
            [str(binary), "--virtual", "--width", str(WIDTH), "--height", str(HEIGHT), "--output-count", "2",
             "--socket", self.session.environment["WAYLAND_DISPLAY"], "--xwayland", "--no-lockscreen", str(script)],
            environment, "kwin",
        )

        def is_up() -> bool:
            assert self.kwin.poll() is None, f"KWin ended with {self.kwin.returncode}"
            return reported.exists()

        until(is_up, "KWin to start", STARTING)
        self.session.environment["DISPLAY"] = reported.read_text().strip()

    def stop_kwin(self) -> None:
        self.session.processes.end(self.kwin)
        self.kwin = None

    def renew_keyboard(self) -> None:
        """Reconnects after another KWin was started."""
        self.keyboard = FakeKeyboard(self.session)

    # Applications

    def start(self, *command: str, package: str = "", environment: dict[str, str] | None = None):
        if not command[0].startswith("/"):
            require(command[0], package or command[0])
        return self.session.start(list(command), Path(command[0]).name, environment)

    def wait_for(self, process, seconds: float = STARTING) -> Client:
        def appeared() -> list[SeenWindow]:
            assert process.poll() is None, f"it ended with {process.returncode}"
            return self.eyes.of_process(process.pid)

        windows = until(appeared, "its window", seconds, self.eyes.windows)
        return Client(process, windows[0].id, Path(process.args[0]).name)

    def open(self, *command: str, package: str = "", environment: dict[str, str] | None = None) -> Client:
        """Starts an application and brings its window to the front."""
        client = self.wait_for(self.start(*command, package=package, environment=environment))
        self.eyes.activate(client.window)
        return client

    def end(self, client: Client) -> None:
        self.session.processes.end(client.process)
        until(lambda: not self.eyes.of_process(client.process.pid), "its windows to be gone")

    # The program under test

    def launch(self, *options: str, status: str | None = "Active") -> Product:
        product = super().launch(*options)
        if status:
            product.until_status(status)
        return product

    def press(self, product: Product, action: str) -> None:
        """Presses an action's shortcut. Returns when program and KWin have handled it, with all retries."""
        self.keyboard.press(action)
        self.eyes.look()
        product.until_no_retry()

    def holds_frame(self, window: str, frame: Rect, what: str, seconds: float = 3.0) -> None:
        until_equal(lambda: self.eyes.frame(window), frame, what, seconds)

    def held_keys(self) -> list[str]:
        """The program's actions that have a key, as KGlobalAccel lists them."""
        try:
            place = ("org.kde.kglobalaccel", "/component/org_corvid_Tessel", "org.kde.kglobalaccel.Component")
            infos = self.bus.call(place, "allShortcutInfos")[0]
        except GLib.Error:
            return []
        return sorted(info[1] for info in infos if any(info[6]))

    def shortcut_settings(self) -> str:
        """The stored shortcuts of all programs, after KGlobalAccel has written them."""
        file = self.session.home / ".config/kglobalshortcutsrc"
        marker = ["org.example.Marker", "marker", "A marker", "A marker"]
        self.bus.call(ACCEL, "doRegister", "(as)", marker)
        self.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", marker, [([0x1C000041, 0, 0, 0],)], 6)
        until(lambda: file.exists() and marker[0] in file.read_text(), "the shortcuts to be written", 10.0)
        return file.read_text()

    def has_our_script(self) -> bool:
        return self.bus.call(KWIN, "isScriptLoaded", "(s)", OUR_SCRIPT)[0]

    # End

    def close_connections(self) -> None:
        # After a normal end request it removes its X server and their files.
        if self.kwin is not None and self.kwin.poll() is None:
            self.stop_kwin()
