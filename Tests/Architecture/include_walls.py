#!/usr/bin/python3
"""The walls between the folders, checked in every #include.

usage: include_walls.py ROOT

Prints one line for each include that breaks a wall, and fails if there is any. An include in quotation marks is one of
ours, written from the root. One in angle brackets belongs to the standard library unless it looks like a C header (with
a slash or ".h"); each folder must name its C headers.
"""

import re
import sys
from dataclasses import dataclass
from pathlib import Path

SYSTEM = r"(sys/.*|linux/.*|arpa/.*|netinet/.*|\w+\.h)"


@dataclass(frozen=True)
class Wall:
    """The allowed includes of one folder's sources; both are regular expressions that match the whole name."""

    folder: str  # The most specific wall comes first and decides.
    ours: str
    libraries: str = ""

    def permits(self, name: str, is_ours: bool) -> bool:
        if is_ours:
            return re.fullmatch(self.ours, name) is not None
        is_standard = "/" not in name and not name.endswith(".h")
        return is_standard or re.fullmatch(self.libraries, name) is not None


QT = r"Q\w+|QtQml/.*"
# The seam's three directions: what is asked of a desktop, what the toolkit offers, and what is asked of us from outside.
DESKTOP = r"Platform/Seam/(Desktop/\w+|Platform)\.h"
TOOLKIT = r"Platform/Seam/Toolkit/\w+\.h"
REQUESTS = r"Platform/Seam/Requests/\w+\.h"
SEAM = rf"{DESKTOP}|{TOOLKIT}|{REQUESTS}"
WALLS = [
    Wall("CorvidKitCore", r"CorvidKitCore/.*"),
    Wall("TesselCore", r"(TesselCore|CorvidKitCore)/.*"),
    Wall("Platform/Absent", rf"{DESKTOP}|(Platform/Absent|CorvidKitCore)/.*"),
    Wall("Platform/Simulated", rf"{SEAM}|(Platform/Simulated|CorvidKitCore)/.*"),
    Wall("Platform/Linux", rf"{DESKTOP}|{REQUESTS}|(Platform/Linux|CorvidKitCore)/.*", rf"glib\.h|systemd/.*|plist/.*|{SYSTEM}"),
    Wall("Platform/X11", rf"{DESKTOP}|(Platform/X11|Platform/Linux|CorvidKitCore)/.*", rf"xcb/.*|{SYSTEM}"),
    Wall("Platform/Compositor",
         rf"{DESKTOP}|(Platform/Compositor|Platform/Linux|CorvidKitCore)/.*|(vicinae|xx)-hotkey-v1-client-protocol\.h",
         rf"nlohmann/json\.hpp|wayland-client\.h|{SYSTEM}"),
    # The IPC that sway has from i3.
    Wall("Platform/I3Ipc", rf"{DESKTOP}|(Platform/I3Ipc|Platform/Compositor|Platform/Linux|CorvidKitCore)/.*",
         rf"nlohmann/json\.hpp|{SYSTEM}"),
    *(
        Wall(folder, rf"{DESKTOP}|({folder}|Platform/Compositor|Platform/Linux|CorvidKitCore)/.*",
             rf"systemd/.*|nlohmann/json\.hpp|{SYSTEM}")
        for folder in ("Platform/KWin", "Platform/ShellCore")
    ),
    # The shells in which our core runs.
    *(
        Wall(folder, rf"{DESKTOP}|({folder}|Platform/ShellCore|Platform/Compositor|Platform/Linux|CorvidKitCore)/.*",
             rf"systemd/.*|nlohmann/json\.hpp|{SYSTEM}")
        for folder in ("Platform/GnomeShell", "Platform/Cinnamon")
    ),
    Wall("Platform/Sway", rf"{DESKTOP}|Platform/(Sway|I3Ipc|Compositor|Linux)/.*|CorvidKitCore/.*",
         rf"nlohmann/json\.hpp|{SYSTEM}"),
    # It reads descriptions of options in XML.
    Wall("Platform/Wayfire", rf"{DESKTOP}|Platform/(Wayfire|Compositor|Linux)/.*|CorvidKitCore/.*",
         rf"glib\.h|nlohmann/json\.hpp|{SYSTEM}"),
    Wall("Platform/Hyprland", rf"{DESKTOP}|Platform/(Hyprland|Compositor|Linux)/.*|CorvidKitCore/.*",
         rf"nlohmann/json\.hpp|{SYSTEM}"),
    # An X11 desktop whose windows are placed over that IPC.
    Wall("Platform/I3", rf"{DESKTOP}|Platform/(I3|I3Ipc|X11|Linux)/.*|CorvidKitCore/.*",
         rf"xcb/.*|nlohmann/json\.hpp|{SYSTEM}"),
    # X11 desktops whose tiled windows are taken out of the layout over a protocol of the window manager's own.
    Wall("Platform/Bspwm", rf"{DESKTOP}|Platform/(Bspwm|Compositor|X11|Linux)/.*|CorvidKitCore/.*",
         rf"xcb/.*|nlohmann/json\.hpp|{SYSTEM}"),
    Wall("Platform/Awesome", rf"{DESKTOP}|Platform/(Awesome|Compositor|X11|Linux)/.*|CorvidKitCore/.*",
         rf"xcb/.*|systemd/.*|{SYSTEM}"),
    Wall("Platform/Herbstluftwm", rf"{DESKTOP}|Platform/(Herbstluftwm|X11)/.*|CorvidKitCore/.*", r"xcb/.*"),
    Wall("Platform/Seam/Desktop", rf"{DESKTOP}|CorvidKitCore/.*"),
    Wall("Platform/Seam", rf"{SEAM}|CorvidKitCore/.*"),
    Wall("Platform", rf"{DESKTOP}|CorvidKitCore/.*"),
    # The code that shows windows; nothing else knows the toolkit.
    Wall("CorvidKit/Components", r"(CorvidKit|CorvidKitCore)/.*", QT),
    Wall("CorvidKit/Toolkit", rf"{DESKTOP}|{TOOLKIT}|(CorvidKit|CorvidKitCore)/.*", QT),
    Wall("CorvidKit", rf"{DESKTOP}|{TOOLKIT}|(CorvidKit|CorvidKitCore)/.*"),
    # Only main knows the desktops: it chooses one and passes it on.
    Wall("Tessel/Wiring", r"(Tessel|TesselCore|CorvidKit|CorvidKitCore|Platform)/.*", SYSTEM),
    Wall("Tessel/Menu", rf"{SEAM}|(Tessel|TesselCore|CorvidKit|CorvidKitCore)/.*", QT),
    Wall("Tessel/main.cpp", r"(Tessel|TesselCore|CorvidKit|CorvidKitCore|Platform)/.*"),
    Wall("Tessel/StatusReportJson.cpp", r"Tessel/StatusReport\.h", r"nlohmann/json\.hpp"),
    Wall("Tessel", rf"{SEAM}|(Tessel|TesselCore|CorvidKit|CorvidKitCore)/.*"),
]

NOT_THE_PRODUCT = {"Benchmarks", "Demo", "Tests", "build"}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"(?P<ours>[^"]+)"|<(?P<other>[^>]+)>)')


def wall_of(path: str) -> Wall | None:
    return next((wall for wall in WALLS if path == wall.folder or path.startswith(wall.folder + "/")), None)


def sources(root: Path) -> list[Path]:
    """The C++ files of the product, relative to `root`."""
    folders = [folder for folder in root.iterdir() if folder.name not in NOT_THE_PRODUCT and folder.name[0] != "."]
    files = [file for folder in folders for file in folder.rglob("*") if file.suffix in {".h", ".cpp"}]
    return sorted(file.relative_to(root) for file in files)


def breaches(root: Path) -> list[str]:
    """One line for each broken wall below `root`: the place, the include, and the allowed includes."""
    found = []
    for path in map(Path.as_posix, sources(root)):
        wall = wall_of(path)
        if wall is None:
            found.append(f"{path}:1: stands behind no wall; give its folder one in {Path(__file__).name}")
            continue
        for number, line in enumerate((root / path).read_text(encoding="utf-8").splitlines(), start=1):
            include = INCLUDE.match(line)
            if include is None:
                continue
            name = include["ours"] or include["other"]
            if not wall.permits(name, is_ours=include["ours"] is not None):
                allowed = " or ".join(filter(None, [wall.ours, wall.libraries]))
                found.append(f"{path}:{number}: includes {name}; {wall.folder} may include the standard library and"
                             f" {allowed}")
    return found


def main() -> int:
    root = Path(sys.argv[1])
    if not sources(root):
        sys.exit(f"{root} has no C++ sources to check.")
    found = breaches(root)
    for breach in found:
        print(breach)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
