"""Pictures of the screen."""

from pathlib import Path

from PIL import Image
from Xlib import X, display

from .waiting import until


def screen(name: str) -> Image.Image:
    """What that display shows now."""
    connection = display.Display(name)
    try:
        root = connection.screen().root
        size = root.get_geometry()
        image = root.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xFFFFFFFF)
        return Image.frombytes("RGB", (size.width, size.height), image.data, "raw", "BGRX")
    finally:
        connection.close()


def settled_screen(name: str) -> Image.Image:
    """What that display shows once its windows have been drawn: the same in several looks one after the other."""
    looks: list[Image.Image] = []

    def same() -> bool:
        looks.append(screen(name))
        return len(looks) >= 4 and all(look.tobytes() == looks[-1].tobytes() for look in looks[-4:])

    until(same, "the screen to be drawn")
    return looks[-1]


def save_screen(name: str, path: Path) -> None:
    """Writes the whole screen of that display as a PNG."""
    screen(name).save(path)
