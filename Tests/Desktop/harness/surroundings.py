"""The surroundings of a session: fonts, languages, themes, installed applications. They are the same on every machine.

They take nothing from the environment of the caller, and from the machine only what is named here: another font,
application or autostarted program must not change the result of a test.
"""

import os
from pathlib import Path

# The fonts of fonts-dejavu-core.
FONTS = ("DejaVuSans", "DejaVuSans-Bold", "DejaVuSansMono", "DejaVuSansMono-Bold", "DejaVuSerif", "DejaVuSerif-Bold")

# Fonts are rendered with Debian's defaults.
FONT_SETTINGS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts/truetype/dejavu</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir prefix="xdg">fontconfig</cachedir>
  <selectfont>
    <rejectfont><glob>*</glob></rejectfont>
    <acceptfont>{accepted}</acceptfont>
  </selectfont>
  <alias><family>sans-serif</family><prefer><family>DejaVu Sans</family></prefer></alias>
  <alias><family>serif</family><prefer><family>DejaVu Serif</family></prefer></alias>
  <alias><family>monospace</family><prefer><family>DejaVu Sans Mono</family></prefer></alias>
  <match target="pattern">
    <edit mode="append" name="antialias"><bool>true</bool></edit>
    <edit mode="append" name="hintstyle"><const>hintslight</const></edit>
    <edit mode="append" name="lcdfilter"><const>lcddefault</const></edit>
    <edit mode="append_last" name="family"><string>DejaVu Sans</string></edit>
  </match>
</fontconfig>
"""

GTK_SETTINGS = """[Settings]
gtk-theme-name=Adwaita
gtk-icon-theme-name=Adwaita
gtk-font-name=Sans 10
gtk-cursor-blink=false
"""

# The applications that the tests move. Desktops have their own entries, by which they recognize themselves.
APPLICATIONS = ("debian-xterm", "featherpad", "org.xfce.mousepad")
DESKTOPS = (
    "i3", "kwin", "marco", "metacity", "mutter", "openbox", "org.gnome.Shell", "org.kde.kded", "org.kde.kwin", "sway",
)


def surround(directory: Path, home: Path) -> dict[str, str]:
    """Creates the surroundings in a session's directory and its new home. Returns the variables that name them."""
    fonts = directory / "fonts.conf"
    accepted = "".join(f"<glob>*/{name}.ttf</glob>" for name in FONTS)
    fonts.write_text(FONT_SETTINGS.format(accepted=accepted))
    for version in ("gtk-3.0", "gtk-4.0"):
        settings = home / ".config" / version / "settings.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text(GTK_SETTINGS)
    data = directory / "share"
    _mirror(Path("/usr/share"), data, "applications")
    applications = data / "applications"
    applications.mkdir()
    for entry in Path("/usr/share/applications").glob("*.desktop"):
        if entry.stem in APPLICATIONS or entry.stem.startswith(DESKTOPS):
            (applications / entry.name).symlink_to(entry)
    configuration = directory / "xdg"
    _mirror(Path("/etc/xdg"), configuration, "autostart")
    return {
        "FONTCONFIG_FILE": str(fonts),
        "LANG": "C.UTF-8",
        # Qt 6.11 logs a warning in every session without a portal, and these sessions have none.
        "QT_LOGGING_RULES": "qt.qpa.services.warning=false",
        "XDG_CONFIG_DIRS": str(configuration),
        "XDG_DATA_DIRS": str(data),
        "XKB_DEFAULT_RULES": "evdev",
        "XKB_DEFAULT_MODEL": "pc105",
        "XKB_DEFAULT_LAYOUT": "us",
    }


def _mirror(original: Path, mirror: Path, left_out: str) -> None:
    """Makes a folder with all entries of another one except one."""
    mirror.mkdir()
    if original.is_dir():
        for entry in os.scandir(original):
            if entry.name != left_out:
                (mirror / entry.name).symlink_to(entry.path)
