"""The monitors of GNOME Shell, arranged in the way its settings do."""

from typing import NamedTuple

from .gnome import Gnome
from .rect import Rect
from .waiting import until_equal

DISPLAY_CONFIG = ("org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig", "org.gnome.Mutter.DisplayConfig")
# Temporary configuration: until the shell ends, without a question to keep it.
TEMPORARY = 1
UPRIGHT = 0


class ScalableGnome(Gnome):
    """Monitors with any scale. They are large enough for two: the shell refuses a scale that leaves little room."""

    monitors = (Rect(0, 0, 2400, 1350), Rect(2400, 0, 2240, 1200))

    def _prepare(self, keys_free: bool, extension: str) -> None:
        super()._prepare(keys_free, extension)
        # Without it GNOME 43 and 48 offer whole scales only, and one for all monitors; 51 has no such setting.
        schema, key, feature = "org.gnome.mutter", "experimental-features", "scale-monitor-framebuffer"
        if key in self.session.run(["gsettings", "list-keys", schema]).split():
            self.change_setting(schema, key, f"['{feature}']")


class Monitor(NamedTuple):
    """A connected monitor: its number in the order of the virtual monitors, and its wanted scale."""

    number: int
    scale: float = 1.0


def arrange(desktop: Gnome, *wanted: Monitor) -> list[Rect]:
    """Leaves these monitors, side by side, the first of them primary. Returns their frames once the shell shows them
    so.

    The shell rounds a scale to one that leaves whole points.
    """
    serial, plugged, _, _ = desktop.bus.call(*DISPLAY_CONFIG, "GetCurrentState")
    logical, frames, left = [], [], 0
    for each in wanted:
        (connector, *_), modes, _ = sorted(plugged)[each.number]
        # A disabled monitor has no current mode.
        mode, width, height, _, _, scales, _ = max(modes, key=lambda offered: offered[6].get("is-preferred", False))
        scale = min(scales, key=lambda offered: abs(offered - each.scale))
        assert abs(scale - each.scale) < 0.01, f"{connector} may be scaled by {scales} only"
        frames.append(Rect(left, 0, round(width / scale), round(height / scale)))
        logical.append((left, 0, scale, UPRIGHT, left == 0, [(connector, mode, {})]))
        left += frames[-1].width
    desktop.bus.call(
        *DISPLAY_CONFIG, "ApplyMonitorsConfig", "(uua(iiduba(ssa{sv}))a{sv})", serial, TEMPORARY, logical, {}
    )
    until_equal(lambda: frames_of(desktop), frames, "the monitors")
    return frames


def frames_of(desktop: Gnome) -> list[Rect]:
    return [Rect(*frame) for frame in desktop.see(
        "[...Array(global.display.get_n_monitors()).keys()].map(i => rect(global.display.get_monitor_geometry(i)))"
    )]
