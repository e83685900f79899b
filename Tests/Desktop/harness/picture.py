"""Pictures of the screen."""

from pathlib import Path

from PIL import Image
from Xlib import X, display


def save_screen(name: str, path: Path) -> None:
    """Writes the whole screen of that display as a PNG."""
    connection = display.Display(name)
    try:
        root = connection.screen().root
        size = root.get_geometry()
        image = root.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xFFFFFFFF)
        Image.frombytes("RGB", (size.width, size.height), image.data, "raw", "BGRX").save(path)
    finally:
        connection.close()
