"""How a user takes Control+Alt+arrows and Control+Alt+D away from each window manager: in its own configuration."""

import re
from pathlib import Path
from xml.etree import ElementTree

from .session import Session

KEYFILE = ".config/glib-2.0/settings/keyfile"


def openbox(session: Session) -> None:
    """The system's rc.xml without the bindings of the arrows."""
    system = Path("/etc/xdg/openbox/rc.xml").read_text()
    kept, count = re.subn(r'<keybind key="C-A-(?:Left|Right|Up|Down)">.*?</keybind>', "", system, flags=re.DOTALL)
    assert count == 4, f"{count} bindings found in openbox's configuration"
    session.configure(".config/openbox/rc.xml", kept)


def xfwm4(session: Session) -> None:
    """A shortcut list of the user's own, which replaces the system's: the same without ours."""
    system = ElementTree.parse("/etc/xdg/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml").getroot()
    defaults = system.find("property[@name='xfwm4']/property[@name='default']")
    assert defaults is not None
    ours = {f"<Primary><Alt>{key}" for key in ("Left", "Right", "Up", "Down", "d")}
    channel = ElementTree.Element("channel", name="xfce4-keyboard-shortcuts", version="1.0")
    manager = ElementTree.SubElement(channel, "property", name="xfwm4", type="empty")
    custom = ElementTree.SubElement(manager, "property", name="custom", type="empty")
    ElementTree.SubElement(custom, "property", name="override", type="bool", value="true")
    for shortcut in defaults:
        if shortcut.get("name") not in ours:
            custom.append(shortcut)
    session.configure(
        ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml",
        '<?xml version="1.0" encoding="UTF-8"?>\n' + ElementTree.tostring(channel, encoding="unicode"),
    )


def _no_workspace_keys(group: str, nothing: str) -> str:
    lines = [f"switch-to-workspace-{direction}={nothing}" for direction in ("left", "right", "up", "down")]
    return "\n".join([f"[{group}]", *lines]) + "\n"


def metacity(session: Session) -> None:
    session.configure(KEYFILE, _no_workspace_keys("org/gnome/desktop/wm/keybindings", "@as []"))


mutter = metacity


def marco(session: Session) -> None:
    session.configure(
        KEYFILE, _no_workspace_keys("org/mate/marco/global-keybindings", "'disabled'") + "show-desktop='disabled'\n"
    )


def icewm(session: Session) -> None:
    names = ("KeySysWorkspacePrev", "KeySysWorkspaceNext", "KeySysWorkspaceLast", "KeySysShowDesktop")
    session.configure(".icewm/preferences", "".join(f'{name}=""\n' for name in names))


def fluxbox(session: Session) -> None:
    """The system's keys without the two workspace keys, and an init file that names them."""
    system = Path("/etc/X11/fluxbox")
    kept, count = re.subn(r"(?m)^Control Mod1 (?:Left|Right) .*\n", "", (system / "keys").read_text())
    assert count == 2, f"{count} bindings found in fluxbox's configuration"
    session.configure(".fluxbox/keys", kept)
    session.configure(".fluxbox/init", (system / "init").read_text())
