"""X11 desktops with tiling window managers that let a window out of their layout over a protocol of their own.

The harness arranges windows with each window manager's own tool and reads the results from the X server.
"""

import json
from pathlib import Path

from . import servers
from .applications import Application
from .desktop import Desktop, RunningApplication
from .grabs import held_by_others
from .keyboard import SHORTCUTS
from .rect import Rect
from .skipping import require
from .waiting import STARTING, until
from .window_managers import WindowManager
from .windows import Windows


class TiledWindows(Windows):
    """The visible frame is the child of the root that holds the client's window, with the border that the server
    draws."""

    def frame(self, identifier: int) -> Rect:
        window = self.window(identifier)
        while (parent := window.query_tree().parent) != self.root:
            window = parent
        geometry = window.get_geometry()
        around = 2 * geometry.border_width
        return Rect(geometry.x, geometry.y, geometry.width + around, geometry.height + around)


class TilingDesktop(Desktop):
    """A desktop with one of `TILING_MANAGERS`; the subclass knows its tool."""

    window_manager: WindowManager
    # The program that gives the window manager its commands.
    tool: str

    def __init__(self, program: Path | None = None, name: str = "tiling", server=servers.virtual):
        require(self.window_manager.program, self.window_manager.package)
        super().__init__(program, server, name)
        self.windows.close()
        self.windows = TiledWindows(self.server.display)
        try:
            self.begin()
        except BaseException:
            self.close()
            raise

    def begin(self) -> None:
        """Starts the window manager and sets borders that differ from none."""
        self.manager = self.window_manager
        self.manager_process = self.session.start([*self.manager.command], self.manager.name)
        self.until_settled()
        self.set_up()
        self.windows.fence()

    def command(self, *words: str) -> str:
        return self.session.run([self.tool, *words])

    def set_up(self) -> None:
        raise NotImplementedError

    def is_floating(self, window: int) -> bool:
        raise NotImplementedError

    def set_floating(self, window: int, floats: bool) -> None:
        raise NotImplementedError

    def move(self, window: int, frame: Rect) -> None:
        """Gives a floating window that frame, in the window manager's own way."""
        raise NotImplementedError

    def restart_in_place(self) -> None:
        """Makes the window manager start anew in the same process; `until_known` tells when it has."""
        raise NotImplementedError

    def until_known(self, window: int) -> None:
        """Waits until a window manager that has just started answers for a window."""
        reported = ""

        def is_known() -> bool:
            nonlocal reported
            try:
                self.is_floating(window)
            except AssertionError as refusal:
                reported = str(refusal)
                return False
            return True

        until(is_known, f"{self.manager.name} to know the window", saw=lambda: reported)
        self.windows.fence()

    def put_bar(self, thickness: int) -> None:
        """Reserves room at the top of every monitor, as the user does for a bar."""
        raise NotImplementedError

    def follow_monitors(self) -> None:
        """Makes the window manager use all monitors, unless it does so by itself."""

    def to_second_monitor(self, window: int) -> None:
        """Sends a window to the second monitor, into its layout."""
        raise NotImplementedError

    def bind(self, action: str) -> None:
        """Binds the keys of an action, to nothing, as this window manager's users do."""
        raise NotImplementedError

    def tile(self, window: int) -> None:
        """Puts a window back into the layout and gives it the focus."""
        if self.is_floating(window):
            self.set_floating(window, False)
        self.windows.activate(window)
        until(lambda: not self.is_floating(window), "the window to be in the layout")

    def place(self, window: int, frame: Rect) -> None:
        """Takes a window out of the layout, moves it there and gives it the focus, as a person might."""
        if not self.is_floating(window):
            self.set_floating(window, True)
        self.move(window, frame)
        self.windows.activate(window)
        self.windows.fence()

    def open(self, application: Application, *options: str) -> RunningApplication:
        running = self.start(application, *options)
        self.wait_for(running)
        self.windows.activate(running.window)
        return running


class Bspwm(TilingDesktop):
    # Any program serves as its configuration.
    window_manager = WindowManager("bspwm", "bspwm", ("bspwm", "-c", "/bin/true"), None, honours_increments=False)
    tool = "bspc"

    def until_settled(self, *arguments) -> None:
        super().until_settled(*arguments)
        # The end of its configuration's program interrupts its reading, and then it never replies to that request.
        children = Path(f"/proc/{self.manager_process.pid}/task/{self.manager_process.pid}/children")
        until(lambda: not children.read_text(), "bspwm to have run its configuration")

    def set_up(self) -> None:
        self.command("config", "border_width", "3")
        # Windows that are there before it stay unmanaged until it is told so.
        self.command("wm", "--adopt-orphans")

    def is_floating(self, window: int) -> bool:
        return json.loads(self.command("query", "-T", "-n", str(window)))["client"]["state"] == "floating"

    def set_floating(self, window: int, floats: bool) -> None:
        self.command("node", str(window), "-t", "floating" if floats else "tiled")

    def move(self, window: int, frame: Rect) -> None:
        border = 2 * self.windows.window(window).get_geometry().border_width
        self.windows.window(window).configure(
            x=frame.x, y=frame.y, width=frame.width - border, height=frame.height - border
        )
        self.windows.fence()

    def restart_in_place(self) -> None:
        self.command("wm", "-r")
        command_line = Path(f"/proc/{self.manager_process.pid}/cmdline")
        until(lambda: b"-s" in command_line.read_bytes().split(b"\0"), "bspwm to begin anew with its state")
        self.until_settled()

    def put_bar(self, thickness: int) -> None:
        for monitor in self.monitors():
            self.command("config", "-m", monitor, "top_padding", str(thickness))

    def monitors(self) -> list[str]:
        return self.command("query", "-M").split()

    def follow_monitors(self) -> None:
        until(lambda: len(self.monitors()) == 2, "bspwm to have both monitors")

    def to_second_monitor(self, window: int) -> None:
        self.command("node", str(window), "-m", self.monitors()[1])

    def bind(self, action: str) -> None:
        require("sxhkd", "sxhkd")
        self.session.configure(".config/sxhkd/sxhkdrc", f"ctrl + alt + {SHORTCUTS[action]}\n    true\n")
        self.session.start(["sxhkd"], "sxhkd", {"SHELL": "/bin/sh"})
        until(lambda: set(held_by_others(self.server.display)) == {action}, "sxhkd to hold the keys")


class Herbstluftwm(TilingDesktop):
    window_manager = WindowManager("herbstluftwm", "herbstluftwm", ("herbstluftwm", "-c", "/bin/true"), None)
    tool = "herbstclient"

    def border(self) -> str:
        """The configured width; "" as long as nothing replies to commands."""
        try:
            return self.command("attr", "theme.border_width").strip()
        except AssertionError:
            return ""

    def set_up(self) -> None:
        # It announces itself before it accepts commands.
        until(self.border, "herbstluftwm to reply", STARTING)
        # Of a floating window the decoration is another one.
        for attribute, value in (
            ("theme.border_width", "3"), ("theme.title_height", "12"), ("theme.floating.border_width", "5"),
        ):
            self.command("attr", attribute, value)

    def attribute(self, window: int, name: str) -> str:
        return self.command("get_attr", f"clients.{window:#x}.{name}").strip()

    def is_floating(self, window: int) -> bool:
        return self.attribute(window, "floating_effectively") == "true"

    def set_floating(self, window: int, floats: bool) -> None:
        self.command("set_attr", f"clients.{window:#x}.floating", "true" if floats else "false")

    def move(self, window: int, frame: Rect) -> None:
        client, around = self.windows.client_rect(window), self.windows.frame(window)
        self.windows.window(window).configure(
            x=frame.x + client.x - around.x, y=frame.y + client.y - around.y,
            width=frame.width + client.width - around.width, height=frame.height + client.height - around.height,
        )
        self.windows.fence()

    def restart_in_place(self) -> None:
        former = self.border()
        self.command("wmexec", "herbstluftwm", "-c", "/bin/true")
        # The process stays; the configured width does not.
        until(lambda: self.border() not in ("", former), "herbstluftwm to begin anew", STARTING)
        self.until_settled()
        self.set_up()

    def put_bar(self, thickness: int) -> None:
        for monitor in self.command("list_monitors").splitlines():
            self.command("pad", monitor.split(":")[0], str(thickness))

    def follow_monitors(self) -> None:
        self.command("add", "second")
        self.command("detect_monitors")

    def to_second_monitor(self, window: int) -> None:
        self.command("focus_monitor", "1")
        self.command("bring", f"{window:#x}")

    def bind(self, action: str) -> None:
        self.command("keybind", f"Control-Mod1-{SHORTCUTS[action]}", "true")


class Awesome(TilingDesktop):
    # It has a bar and titles, and all windows float until a tag gets a layout.
    window_manager = WindowManager("awesome", "awesome", ("awesome",), None)
    tool = "awesome-client"
    CONFIGURATION = Path("/etc/xdg/awesome/rc.lua")
    # The focus would follow the pointer into each window that moves below it.
    SLOPPY_FOCUS = 'client.connect_signal("mouse::enter",'

    def begin(self) -> None:
        usual = self.CONFIGURATION.read_text()
        assert self.SLOPPY_FOCUS in usual, f"{self.CONFIGURATION} has no line for the focus"
        text = usual.replace(self.SLOPPY_FOCUS, 'client.connect_signal("tests::never",')
        self.session.configure(".config/awesome/rc.lua", text)
        super().begin()

    def evaluate(self, script: str) -> str:
        """What the script returns, which is a text."""
        return self.command(script).strip().removeprefix("string").strip().strip('"')

    def executes(self, script: str) -> bool:
        """Whether it replies, and the script returns "ready"."""
        try:
            return self.evaluate(script) == "ready"
        except AssertionError:
            return False

    def set_up(self) -> None:
        until(lambda: self.executes("return 'ready'"), "awesome to execute commands", STARTING)
        self.evaluate(
            "local awful = require('awful') for s in screen do s.mywibox.visible = false "
            "for _, tag in ipairs(s.tags) do tag.layout = awful.layout.suit.tile end end"
        )

    def of_client(self, window: int, script: str) -> str:
        """What the script returns for the client `c`."""
        result = self.evaluate(
            f"for _, c in ipairs(client.get()) do if c.window == {window} then {script} return 'done' end end "
            "return 'unknown'"
        )
        assert result != "unknown" and "Error" not in result, f"{window:#x}: {result}"
        return result

    def is_floating(self, window: int) -> bool:
        return self.of_client(window, "do return tostring(c.floating) end") == "true"

    def set_floating(self, window: int, floats: bool) -> None:
        self.of_client(window, f"c.floating = {'true' if floats else 'false'}")

    def move(self, window: int, frame: Rect) -> None:
        self.of_client(
            window,
            f"local b = 2 * c.border_width c:geometry({{x = {frame.x}, y = {frame.y}, width = {frame.width} - b, "
            f"height = {frame.height} - b}})",
        )

    def restart_in_place(self) -> None:
        # The process, its windows and their numbers stay; a variable does not.
        self.evaluate("former = true require('gears.timer').delayed_call(awesome.restart)")
        until(lambda: self.executes("return former and 'former' or 'ready'"), "awesome to begin anew", STARTING)
        self.until_settled()
        self.set_up()

    def put_bar(self, thickness: int) -> None:
        self.evaluate(
            f"for s in screen do require('awful').wibar({{ position = 'top', screen = s, height = {thickness} }}) end"
        )
        until(
            lambda: self.evaluate("return tostring(screen.primary.workarea.y)").split(".")[0] == str(thickness),
            "awesome to have made room for its bars",
        )

    def follow_monitors(self) -> None:
        until(
            lambda: self.evaluate("return tostring(screen.count() == 2 and screen[2].geometry.x > 0)") == "true",
            "awesome to have both monitors",
        )
        self.set_up()

    def to_second_monitor(self, window: int) -> None:
        self.of_client(window, "c:move_to_screen(screen[2])")

    def bind(self, action: str) -> None:
        self.evaluate(
            "root.keys(require('gears.table').join(root.keys(), require('awful.key')({'Control', 'Mod1'}, "
            f"'{SHORTCUTS[action]}', function() end)))"
        )
        until(lambda: set(held_by_others(self.server.display)) == {action}, "awesome to hold the keys")


TILING_DESKTOPS = {desktop.window_manager.name: desktop for desktop in (Bspwm, Herbstluftwm, Awesome)}
