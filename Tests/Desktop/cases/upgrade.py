"""The program's files are replaced by those of another build while it runs."""

import os
import shutil
import subprocess
from pathlib import Path

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import all_held, held_by_others
from harness.popover import Popover
from harness.product import run_to_end
from harness.rect import Rect
from harness.tray import choose, menu, start_panel, until_icon
from harness.waiting import until

from . import case
from .popover import ACTIVE, XFCE, mapped
from .remote import ask, status_of

UPDATED = "Tessel was updated"


class Installed:
    """The program in a folder of its own, with the layout of a package."""

    def __init__(self, desktop: Desktop):
        self.folder = desktop.session.directory / "installed/bin"
        self.folder.mkdir(parents=True)
        # Its icons and other resources are where a build has them.
        (self.folder.parent / "share").symlink_to(desktop.program.parent.parent / "share")
        self.program = self.folder / "tessel"
        self.plugin = self.folder / "tessel-menu.so"
        for file in (self.program, self.plugin):
            shutil.copy2(desktop.program.parent / file.name, file)
        desktop.program = self.program
        self.trace = desktop.session.directory / "other-build-has-run"
        self.environment = {"TESSEL_OTHER_BUILD_HAS_RUN": str(self.trace)}

    def put(self, file: Path, contents: Path) -> None:
        """Replaces a file by another one, as dpkg does."""
        beside = file.with_name(file.name + ".dpkg-new")
        shutil.copy2(contents, beside)
        beside.rename(file)

    def upgrade(self) -> None:
        """Installs another build there: the same program with another identity, and an interface that must not run."""
        identity = self.folder / "identity"
        subprocess.run(
            ["objcopy", "--dump-section", f".note.gnu.build-id={identity}", self.program, "/dev/null"], check=True
        )
        note = identity.read_bytes()
        identity.write_bytes(note[:-1] + bytes([note[-1] ^ 0xFF]))
        other = self.folder / "other"
        subprocess.run(
            ["objcopy", "--update-section", f".note.gnu.build-id={identity}", self.program, other], check=True
        )
        self.put(self.plugin, Path(os.environ["TESSEL_OTHER_BUILD"]))
        self.put(self.program, other)


def executable(process: int) -> str:
    return os.readlink(f"/proc/{process}/exe")


@case("desktop.upgrade.replaced")
def it_goes_on_as_it_is_and_says_so(program):
    with Desktop(program, name="upgrade.replaced") as desktop:
        installed = Installed(desktop)
        desktop.start_window_manager("openbox")
        start_panel(desktop, XFCE)
        product = desktop.launch(environment=installed.environment)
        product.until_status("Active")
        until_icon(desktop, XFCE, ACTIVE)
        assert not status_of(desktop)["updated"] and UPDATED not in menu(desktop)
        # The same build again, like a reinstalled package: nothing has changed.
        again = installed.folder / "again"
        shutil.copy2(installed.program, again)
        installed.put(installed.program, again)
        assert executable(product.process.pid).endswith(" (deleted)")
        assert not status_of(desktop)["updated"]
        installed.upgrade()
        until(lambda: UPDATED in menu(desktop), "the menu to say so", saw=lambda: menu(desktop))
        assert status_of(desktop)["updated"]
        assert UPDATED in ask(desktop, "--status")
        # Its own window still opens, with its own code.
        assert not mapped(product, "tessel-menu")
        popover = Popover(desktop, product)
        popover.ask_to_open()
        popover.until_open()
        popover.close()
        assert not installed.trace.exists(), "it ran the interface of another build"
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop.press(product, "leftHalf")
        visible = until(desktop.windows.work_area, "the work area")
        desktop.holds_frame(editor.window, Rect(0, visible.y, 960, visible.height), "frame")
        # The program in its place continues in the same process.
        choose(desktop, "Restart Tessel")
        process = product.process.pid
        until(lambda: not executable(process).endswith(" (deleted)"), "the new one to run", saw=product.errors)
        until(lambda: run_to_end(desktop.session, installed.program, "--status")[0] == 0, "the new one to answer")
        until(lambda: held_by_others(desktop.server.display) == all_held(), "the shortcuts to be taken again")
        assert not status_of(desktop)["updated"]
        ask(desktop, "--quit")
        assert product.ended() == 0 and product.errors() == "", product.errors()


@case("desktop.upgrade.overwritten")
def an_interface_of_another_build_is_refused(program):
    with Desktop(program, name="upgrade.overwritten") as desktop:
        installed = Installed(desktop)
        desktop.start_window_manager("openbox")
        product = desktop.launch(environment=installed.environment)
        product.until_status("Active")
        # Writes into the very file that it has open, as no package manager would.
        with open(installed.plugin, "r+b") as plugin:
            plugin.write(Path(os.environ["TESSEL_OTHER_BUILD"]).read_bytes())
            plugin.truncate()
        popover = Popover(desktop, product)
        popover.ask_to_open()
        until(lambda: "another build" in product.errors(), "it to say why", saw=product.errors)
        assert not popover.is_open() and not installed.trace.exists(), "it ran the interface of another build"
        editor = desktop.open(APPLICATIONS["mousepad"])
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, Rect(0, 0, 960, 1080), "frame")
        # It loads the right one as soon as that is back.
        installed.put(installed.plugin, program.parent / "tessel-menu.so")
        popover.ask_to_open()
        popover.until_open()
        popover.close()
        product.terminate(silently=False)
