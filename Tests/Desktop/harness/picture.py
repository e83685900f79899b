"""Pictures of the screen."""

from pathlib import Path

from PIL import Image
from Xlib import X, display

from .rect import Rect
from .waiting import until


def screen(name: str, part: Rect | None = None) -> Image.Image:
    """A picture of that display or of a part of it. Reading pixels is slow, so a part is faster."""
    connection = display.Display(name)
    try:
        root = connection.screen().root
        size = root.get_geometry()
        whole = Rect(0, 0, size.width, size.height)
        part = part or whole
        seen = part.within(whole)
        image = root.get_image(*seen, X.ZPixmap, 0xFFFFFFFF)
        picture = Image.frombytes("RGB", seen.size, image.data, "raw", "BGRX")
    finally:
        connection.close()
    # Pixels outside of the screen are black.
    x, y = part.x - seen.x, part.y - seen.y
    return picture.crop((x, y, x + part.width, y + part.height))


def settled_screen(name: str) -> Image.Image:
    """A picture of that display once its windows are drawn: several readings in a row are equal."""
    looks: list[Image.Image] = []

    def same() -> bool:
        looks.append(screen(name))
        return len(looks) >= 4 and all(look.tobytes() == looks[-1].tobytes() for look in looks[-4:])

    until(same, "the screen to be drawn")
    return looks[-1]


def save_screen(name: str, path: Path) -> None:
    """Writes the whole screen of that display as a PNG."""
    screen(name).save(path)
