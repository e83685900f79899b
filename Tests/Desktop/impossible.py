"""What a window manager makes impossible: for each such case the reason, and exactly what happens instead.

Everything that is not in this table must come out as the rules say, to the pixel.
"""

from dataclasses import dataclass
from typing import Callable

from harness.rect import Rect


@dataclass(frozen=True)
class Deviation:
    reason: str
    # The frame that the rules want to the frame that the window really ends with.
    outcome: Callable[[Rect], Rect]


# (window manager, application, action) to the deviation.
DEVIATIONS: dict[tuple[str, str, str], Deviation] = {}


def deviation_for(manager: str, application: str, action: str) -> Deviation | None:
    return DEVIATIONS.get((manager, application, action))
