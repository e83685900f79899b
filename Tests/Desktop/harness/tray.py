"""Panels with an area for status items, and the items that they show."""

import ast
import subprocess
from dataclasses import dataclass
from io import BytesIO
from pathlib import Path

from PIL import Image, ImageChops

from .picture import screen
from .rect import Rect
from .skipping import require
from .waiting import PATIENCE, until

ACTIVE, PAUSED, WAITING = "uiwindow.split.2x1", "rectangle.split.2x1", "exclamationmark.triangle.fill"
SYMBOLS = (ACTIVE, PAUSED, WAITING)
BADGED = ".badged"

# A bar of 32 pixels along an edge of a monitor, with nothing but the area for status items.
XFCE_EDGES = {"top": 6, "bottom": 8}
XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p={snap};x=0;y=0"/>
      <property name="output-name" type="string" value="{output}"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="systray"/></property>
</channel>
"""


@dataclass(frozen=True)
class Panel:
    name: str
    package: str
    command: tuple[str, ...]
    height: int
    # Whether it reads items from the message bus, or embeds their windows.
    reads_bus: bool
    configuration: tuple[str, str] | None = None


PANELS = {
    panel.name: panel
    for panel in (
        Panel(
            "xfce4-panel", "xfce4-panel", ("xfce4-panel", "--sm-client-disable"), 32, True,
            (".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", XFCE_PANEL),
        ),
        Panel(
            "trayer", "trayer",
            ("trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "200",
             "--heighttype", "pixel", "--height", "32", "--SetDockType", "true"),
            32, False,
        ),
    )
}


def start_panel(desktop, name: str, edge: str = "top", output: str = "Automatic") -> subprocess.Popen:
    """Starts a panel along that edge of the monitor at that output, as far as the panel has such settings."""
    panel = PANELS[name]
    require(panel.command[0], panel.package)
    if panel.configuration:
        path, text = panel.configuration
        desktop.session.configure(path, text.format(snap=XFCE_EDGES[edge], output=output))
    return desktop.session.start(list(panel.command), name)


def call(desktop, destination: str, path: str, method: str, *arguments: str) -> str | None:
    """The reply of a method on the session's bus, as GVariant text; None for an error."""
    done = subprocess.run(
        ["gdbus", "call", "--session", "--dest", destination, "--object-path", path, "--method", method, *arguments],
        stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=10, check=False,
        env=desktop.session.environment,
    )
    return done.stdout.strip() if done.returncode == 0 else None


def registered_items(desktop) -> list[str] | None:
    """The bus names of the items that the panel knows; None if no panel answers."""
    answer = call(
        desktop, "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get",
        "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems",
    )
    if answer is None:
        return None
    if answer == "(<@as []>,)":
        return []
    names = ast.literal_eval(answer.removeprefix("(<").removesuffix(">,)"))
    return [name.split("/")[0] for name in names]


def menu(desktop) -> dict[str, int]:
    """The lines of the item's menu and their ids, as the panel reads them: maps a label to an id."""
    (item,) = registered_items(desktop)
    lines = {}
    for number in range(1, 20):
        label = call(
            desktop, item, "/StatusNotifierMenu", "com.canonical.dbusmenu.GetProperty", str(number), "label"
        )
        if label is not None:
            lines[label.removeprefix("(<'").removesuffix("'>,)")] = number
    return lines


def choose(desktop, label: str) -> None:
    """Activates a line of the item's menu, as a panel does when its user clicks there."""
    (item,) = registered_items(desktop)
    answer = call(
        desktop, item, "/StatusNotifierMenu", "com.canonical.dbusmenu.Event", str(menu(desktop)[label]), "clicked",
        "<int32 0>", "0",
    )
    assert answer == "()", f"choosing {label!r} was answered with {answer!r}"


def _drawing(program: Path, name: str, size: tuple[int, int]) -> Image.Image:
    """The shape of one of the program's icons without its margins, scaled to a size: white on black."""
    icons = program.parent.parent / "share/icons/hicolor/symbolic/apps"
    done = subprocess.run(
        ["rsvg-convert", "--width", "192", "--height", "192", str(icons / f"org.corvid.Tessel.{name}-symbolic.svg")],
        stdin=subprocess.DEVNULL, capture_output=True, timeout=10, check=True,
    )
    shape = Image.open(BytesIO(done.stdout)).convert("RGBA").getchannel("A")
    return shape.crop(shape.getbbox()).resize(size, Image.BOX)


def _shape_in(strip: Image.Image) -> Image.Image | None:
    """The part of the strip that differs from its most frequent colour; None if nothing differs."""
    grey = strip.convert("L")
    background = max(grey.getcolors(strip.width * strip.height))[1]
    shape = ImageChops.difference(grey, Image.new("L", grey.size, background))
    strongest = shape.getextrema()[1]
    # The theme's faint lines and shades do not belong to the icon.
    if strongest < 60:
        return None
    shape = shape.point(lambda value: value * 255 // strongest)
    return shape.crop(shape.point(lambda value: 255 if value > 50 else 0).getbbox())


def _difference(one: Image.Image, other: Image.Image) -> float:
    histogram = ImageChops.difference(one, other).histogram()
    return sum(value * count for value, count in enumerate(histogram)) / (one.width * one.height)


def icon_in(picture: Image.Image, program: Path, tolerable: float = 50) -> str | None:
    """The program's icon in a picture of a panel or of an item there: the one with the best match. None if nothing
    there matches any of them: the mean difference of a pixel, of 255, is above `tolerable`."""
    shape = _shape_in(picture)
    if shape is None or not 8 <= shape.width <= 40 or not 8 <= shape.height <= 40:
        return None
    candidates = {
        symbol + badge: _difference(shape, _drawing(program, symbol + badge, shape.size))
        for symbol in SYMBOLS
        for badge in ("", BADGED)
    }
    best = min(candidates, key=candidates.get)
    return best if candidates[best] < tolerable else None


def shown_icon(desktop, name: str) -> str | None:
    """The program's icon that the panel shows."""
    # A border of the bar is not part of an item.
    return icon_in(screen(desktop.server.display, Rect(0, 2, 190, PANELS[name].height - 5)), desktop.program)


def folders_with_icons(program: Path) -> str:
    """A list of data folders for a session in which a panel has the program's icons by their names."""
    return f"{program.parent.parent / 'share'}:/usr/local/share:/usr/share"


def until_icon(desktop, panel: str, icon: str | None, seconds: float = PATIENCE) -> None:
    until(
        lambda: shown_icon(desktop, panel) == icon, f"the icon {icon} in {panel}", seconds,
        lambda: shown_icon(desktop, panel),
    )
