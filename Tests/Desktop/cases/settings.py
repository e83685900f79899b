"""The settings file, as the running program reads and keeps it."""

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.grabs import held_by_others
from harness.popover import Popover
from harness.rect import Rect

from . import case, case_for_each


@case("desktop.settings.disabled")
def switched_off_it_takes_no_key(program):
    with Desktop(program, name="settings.disabled") as desktop:
        settings = desktop.session.settings("<key>enabled</key><false/>")
        before = desktop.session.settings_of(settings)
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        frame = desktop.windows.frame(editor.window)
        product = desktop.launch()
        product.until_status("Paused")
        assert not held_by_others(desktop.server.display), "a shortcut is held"
        desktop.press(product, "leftHalf")
        assert desktop.windows.frame(editor.window) == frame, "the window moved"
        product.terminate()
        assert desktop.session.settings_of(settings) == before, "the settings changed"


MALFORMED = {
    "empty": b"",
    "garbage": b"\x00\xff not a property list",
    "cut": b'<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict><key>enabled</key><fal',
    "list": b'<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><array><true/></array></plist>\n',
}


@case_for_each("desktop.settings.malformed", MALFORMED)
def a_file_that_cannot_be_read_is_kept_aside_and_the_defaults_hold(program, kind):
    with Desktop(program, name=f"settings.malformed.{kind}") as desktop:
        settings = desktop.session.settings("")
        settings.write_bytes(MALFORMED[kind])
        desktop.start_window_manager("openbox")
        editor = desktop.open(APPLICATIONS["mousepad"])
        product = desktop.launch()
        product.until_status("Active")
        # Without a sign of the contrary, the user is taken for a new one.
        popover = Popover(desktop, product)
        popover.until_open()
        popover.close()
        desktop.press(product, "leftHalf")
        desktop.holds_frame(editor.window, Rect(0, 0, 960, 1080), "frame")
        product.terminate(silently=False)
        kept = [file for file in settings.parent.iterdir() if file.name != settings.name]
        contents = [file.read_bytes() for file in kept]
        assert contents == [MALFORMED[kind]], f"kept beside: {dict(zip(kept, contents))}"
        assert product.errors().count("\n") == 1, f"logged more or less than a line: {product.errors()!r}"
