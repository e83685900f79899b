"""The program's extension in GNOME Shell: its clients, the copy that the shell loads, and shells in which it does
nothing."""

import json

from harness.gnome import EXTENSION, SHORTCUTS, Gnome
from harness.session_bus import Bus
from harness.waiting import throughout, until

from . import case
from .shells import NATURAL, open_application

try:
    from gi.repository import GLib
except ImportError:
    GLib = None

NAME = "org.corvid.Tessel.Windows"
LEFT = "<Control><Alt>0x71"


class Stranger:
    """Another client of the same session that uses the extension's interface."""

    def __init__(self, desktop: Gnome):
        self.bus = Bus(desktop.session.environment["DBUS_SESSION_BUS_ADDRESS"])

    def ask(self, method: str, types: str = "()", *values) -> str | tuple:
        """The reply, or the last part of the name of the error."""
        try:
            return self.bus.call("org.gnome.Shell", "/org/corvid/Tessel/Windows", NAME + "1", method, types, *values)
        except GLib.Error as error:
            assert "GDBus.Error:" in error.message, error.message
            return error.message.split(":")[1].split(".")[-1]

    def take_name(self) -> int:
        """Requests the name: 1 if it owns the name then, 2 if it waits in the queue behind another client."""
        bus = "org.freedesktop.DBus"
        return self.bus.call(bus, "/org/freedesktop/DBus", bus, "RequestName", "(su)", NAME, 0)[0]

    def give_name_back(self) -> None:
        bus = "org.freedesktop.DBus"
        self.bus.call(bus, "/org/freedesktop/DBus", bus, "ReleaseName", "(s)", NAME)

    def is_denied_all(self, window: int) -> None:
        """Calls every method but Hello."""
        item = json.dumps({"icon": "/icon.svg", "title": "Not Tessel", "menu": []})
        for call in (("Frames",), ("Place", "(tiiii)", window, 0, 0, 300, 300), ("Grab", "(us)", 1, LEFT),
                     ("Borrow", "(us)", 1, LEFT), ("LoanObstacle", "(s)", LEFT), ("Pointer",), ("PlaceOwn", "(isii)", 1, "Title", 0, 0), ("Beep",), ("ShowItem", "(s)", item), ("ItemFrame",)):
            answer = self.ask(*call)
            assert answer == "Denied", f"{call} is answered with {answer}"


def status_text(desktop: Gnome) -> str:
    return desktop.status()["statusText"]


@case("desktop.gnome.strangers")
def a_stranger_gets_little_and_leaves_nothing(program):
    with Gnome(program, "gnome.strangers") as desktop:
        _, window = open_application(desktop, "mousepad")
        before = desktop.place(window, NATURAL)
        stranger = Stranger(desktop)

        # A client without the name is refused, both beside the program and while the program is away.
        assert stranger.ask("Hello") == "Denied"
        stranger.is_denied_all(window)
        # With the name there is no access before Hello, and no more than the program needs after it.
        assert stranger.take_name() == 1
        stranger.is_denied_all(window)
        assert "windows" in json.loads(stranger.ask("Hello")[0])
        for combination in ("<Control><Alt>0x26", "<Super>0x71", "Return", "<Alt>Tab", ""):
            assert stranger.ask("Grab", "(us)", 9, combination) == "Denied", combination
            assert stranger.ask("Borrow", "(us)", 9, combination) == "Denied", combination
            assert stranger.ask("LoanObstacle", "(s)", combination) == "Denied", combination
        process = desktop.see(f"one({window}).get_pid()")
        assert stranger.ask("PlaceOwn", "(isii)", process, "Untitled 1 - Mousepad", 0, 0) == "Denied"
        assert not desktop.see(f"one({window}).is_above()")
        assert stranger.ask("Grab", "(us)", 1, LEFT) == (True,)
        stranger.ask("ShowItem", "(s)", json.dumps({"icon": "/icon.svg", "title": "Not Tessel", "menu": []}))
        until(desktop.has_item, "the stranger's item")

        # The program names the client that has its name, and takes the name over when that client ends.
        product = desktop.launch()
        product.until_status("Waiting for permission")
        until(lambda: f"another program has Tessel's name on the message bus ({NAME})" in status_text(desktop),
              "the other client to be reported", saw=lambda: status_text(desktop))
        stranger.give_name_back()
        product.until_status("Active", 20.0)
        stranger.is_denied_all(window)
        # In the queue, behind the program.
        assert stranger.take_name() == 2
        assert desktop.see("Main.panel.statusArea.tessel.accessible_name") == "Tessel"
        assert desktop.frame(window) == before

        # The next client in the queue gets access only with its own Hello, and inherits nothing.
        product.terminate()
        until(lambda: not desktop.has_item(), "the item to be gone")
        until(lambda: not any(desktop.is_bound("Control", "Alt", key) for key in SHORTCUTS.values()), "the keys to be free")
        stranger.is_denied_all(window)
        stranger.bus.close()


@case("desktop.gnome.outdated")
def an_older_copy_in_the_home_is_replaced(program):
    with Gnome(program, "gnome.outdated", extension="outdated") as desktop:
        place = desktop.session.home / ".local/share/gnome-shell/extensions" / EXTENSION
        own = (desktop.extension_folder() / "metadata.json").read_text()
        assert (place / "metadata.json").read_text() != own
        product = desktop.launch()
        product.until_status("Waiting for permission")
        until(lambda: (place / "metadata.json").read_text() == own, "the copy to be replaced")
        until(lambda: "log out and in once" in status_text(desktop), "the notice to appear",
              saw=lambda: status_text(desktop))
        product.terminate()
        # It is still so for the next start of the program in the same session.
        product = desktop.launch()
        until(lambda: "log out and in once" in status_text(desktop), "the notice to appear again",
              saw=lambda: status_text(desktop))
        product.terminate()
        # Simulates the next login.
        desktop.end_shell()
        desktop.start_shell()
        desktop.launch().until_status("Active", 20.0)
        assert status_text(desktop) == "Active"


@case("desktop.gnome.unfit")
def a_shell_that_lacks_something_is_left_alone(program):
    with Gnome(program, "gnome.unfit", extension="off") as desktop:
        desktop.see("delete Main.wm.constructor.prototype.skipNextEffect")
        product = desktop.launch()
        product.until_status("Waiting for permission")
        until(lambda: "which lacks Main.wm.skipNextEffect" in status_text(desktop), "the missing member to be shown",
              saw=lambda: status_text(desktop))
        throughout(1.0, lambda: not desktop.has_item(), "no item in the top bar")
        assert "lacks Main.wm.skipNextEffect" in (desktop.session.logs / "gnome-shell.log").read_text()


@case("desktop.gnome.untried")
def a_shell_of_a_future_version_is_reported(program):
    # A developer's link: the program then leaves the extension's form alone.
    with Gnome(program, "gnome.untried", extension="linked") as desktop:
        desktop.see("Object.defineProperty(Object.getPrototypeOf(Main.shellDBusService), 'ShellVersion', "
                    "{get: () => '60.1'}) !== null")
        desktop.launch().until_status("Active", 20.0)
        until(lambda: status_text(desktop) == "Active; not tried on GNOME 60 yet", "the warning to be reported",
              saw=lambda: status_text(desktop))
        said = desktop.session.run([str(program), "--status"]).splitlines()[0]
        assert said.endswith("Active; not tried on GNOME 60 yet"), said
