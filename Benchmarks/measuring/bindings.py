"""The measured window managers: our keys free, their own bindings for both halves on other keys, no compositing."""

from dataclasses import dataclass, replace
from typing import Callable
from xml.etree import ElementTree

from harness import freed_keys
from harness.session import Session
from harness.window_managers import WINDOW_MANAGERS, WindowManager

# Control and Alt with these keys of the number row, as evdev keycodes.
LEFT_KEY, RIGHT_KEY = "1", "2"


def openbox(session: Session) -> None:
    freed_keys.openbox(session)
    file = session.home / ".config/openbox/rc.xml"
    bindings = "".join(
        f'<keybind key="C-A-{key}"><action name="MoveResizeTo">'
        f"<x>{x}</x><y>0</y><width>50%</width><height>100%</height></action></keybind>"
        for key, x in ((LEFT_KEY, "0"), (RIGHT_KEY, "-0"))
    )
    before, end, after = file.read_text().partition("</keyboard>")
    assert end, "openbox's configuration has no keyboard section"
    file.write_text(before + bindings + end + after)


def xfwm4(session: Session) -> None:
    freed_keys.xfwm4(session)
    file = session.home / ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"
    channel = ElementTree.parse(file)
    custom = channel.find("property[@name='xfwm4']/property[@name='custom']")
    assert custom is not None, "xfwm4's configuration has no list of the user's own"
    for key, value in ((LEFT_KEY, "tile_left_key"), (RIGHT_KEY, "tile_right_key")):
        # It keeps one key for each of its actions.
        for former in custom.findall(f"property[@value='{value}']"):
            custom.remove(former)
        ElementTree.SubElement(custom, "property", name=f"<Primary><Alt>{key}", type="string", value=value)
    channel.write(file, encoding="utf-8", xml_declaration=True)


def kwin(session: Session) -> None:
    session.configure(
        ".config/kglobalshortcutsrc",
        "[kwin]\n"
        f"Window Quick Tile Left=Ctrl+Alt+{LEFT_KEY},Meta+Left,Quick Tile Window to the Left\n"
        f"Window Quick Tile Right=Ctrl+Alt+{RIGHT_KEY},Meta+Right,Quick Tile Window to the Right\n",
    )


@dataclass(frozen=True)
class Measured:
    manager: WindowManager
    # The name of its own binding.
    action: str
    # It ignores other clients' requests for a window that it has tiled until it releases the window.
    tiles_stick: bool = False


def _measured(name: str, action: str, configure: Callable[[Session], None], tiles_stick: bool = False, **changes) -> Measured:
    return Measured(
        replace(WINDOW_MANAGERS[name], free_keys=configure, composites=False, **changes), action, tiles_stick
    )


MEASURED = {
    one.manager.name: one
    for one in (
        _measured("openbox", "MoveResizeTo", openbox),
        _measured(
            "xfwm4", "tile_left_key, tile_right_key", xfwm4,
            command=("xfwm4", "--sm-client-disable", "--compositor=off"),
        ),
        _measured(
            "kwin_x11", "Window Quick Tile", kwin, tiles_stick=True, environment={"KWIN_COMPOSE": "N"}
        ),
    )
}


def use_measured_window_managers() -> None:
    """Makes the desktops of this process start the window managers with these settings."""
    WINDOW_MANAGERS.update({name: measured.manager for name, measured in MEASURED.items()})
