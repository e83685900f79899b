"""How a user removes Control+Alt+arrows and Control+Alt+D from each window manager's own configuration."""

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
    """A user's own shortcut list, which replaces the system's: a copy without our keys."""
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


def add_settings(session: Session, group: str, **entries: str) -> None:
    """Sets keys of one group of the desktop's settings and keeps the others."""
    text = "\n".join([f"[{group}]", *(f"{name.replace('_', '-')}={value}" for name, value in entries.items())]) + "\n"
    file = session.home / KEYFILE
    present = file.read_text() if file.exists() else ""
    if text not in present:
        session.configure(KEYFILE, present + text)


def free_workspace_keys(session: Session, group: str) -> None:
    nothing = "@as []"
    add_settings(
        session, group,
        switch_to_workspace_left=nothing, switch_to_workspace_right=nothing,
        switch_to_workspace_up=nothing, switch_to_workspace_down=nothing,
    )


def metacity(session: Session) -> None:
    free_workspace_keys(session, "org/gnome/desktop/wm/keybindings")


mutter = metacity


def muffin(session: Session) -> None:
    free_workspace_keys(session, "org/cinnamon/desktop/keybindings/wm")


def marco(session: Session) -> None:
    nothing = "'disabled'"
    add_settings(
        session, "org/mate/marco/global-keybindings",
        switch_to_workspace_left=nothing, switch_to_workspace_right=nothing,
        switch_to_workspace_up=nothing, switch_to_workspace_down=nothing, show_desktop=nothing,
    )


def icewm(session: Session) -> None:
    names = ("KeySysWorkspacePrev", "KeySysWorkspaceNext", "KeySysWorkspaceLast", "KeySysShowDesktop")
    session.configure(".icewm/preferences", "".join(f'{name}=""\n' for name in names))


def fluxbox(session: Session) -> None:
    """The system's keys without the two workspace keys."""
    system = Path("/etc/X11/fluxbox/keys").read_text()
    kept, count = re.subn(r"(?m)^Control Mod1 (?:Left|Right) .*\n", "", system)
    assert count == 2, f"{count} bindings found in fluxbox's configuration"
    session.configure(".fluxbox/keys", kept)
