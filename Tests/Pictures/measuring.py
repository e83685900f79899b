"""Where what is in the interface, which colour it has, and how that is found on a picture.

Places are in points from the top left; a point is two pixels.
"""

from PIL import Image

Colour = tuple[int, int, int]

BACKGROUND = {"light": (237, 237, 237), "dark": (41, 41, 41)}
ACCENT = {"light": (0, 122, 255), "dark": (10, 132, 255)}
GREEN = {"light": (28, 150, 59), "dark": (48, 209, 88)}
PRIMARY = {"light": (29, 29, 31), "dark": (245, 245, 247)}
CARD = {"light": (251, 251, 252), "dark": (54, 54, 55)}
# What lies faintly on a card: a colour, and how much of it.
HAIRLINE = {"light": ((0, 0, 0), 0x17 / 255), "dark": ((255, 255, 255), 0x14 / 255)}
DIVIDER = {"light": ((0, 0, 0), 0x14 / 255), "dark": ((255, 255, 255), 0x16 / 255)}

GLYPH = 14, 14, 40
TABS_TOP, TABS_BOTTOM = 66, 94
CARD_TOP, CARD_HEIGHT, ROW_HEIGHT = 106, 245, 40
LOGIN_TOP, LOGIN_HEIGHT = 363, 38
LEFT, RIGHT = 14, 326


def mixed(under: Colour, over: Colour, amount: float) -> Colour:
    return tuple(round(a + (b - a) * amount) for a, b in zip(under, over, strict=True))


def at(picture: Image.Image, x: float, y: float) -> Colour:
    return picture.getpixel((round(x * 2), round(y * 2)))


def runs(line: list[Colour], colour: Colour, slack: int = 0) -> list[tuple[float, float]]:
    """Where a line of pixels has that colour without a break, as start and end in points."""
    found, start = [], None
    for place, pixel in enumerate([*line, None]):
        is_it = pixel is not None and all(abs(a - b) <= slack for a, b in zip(pixel, colour, strict=True))
        if is_it and start is None:
            start = place
        elif not is_it and start is not None:
            found.append((start / 2, place / 2))
            start = None
    return found


def column(picture: Image.Image, x: float, top: float, bottom: float) -> list[Colour]:
    return [picture.getpixel((round(x * 2), y)) for y in range(round(top * 2), round(bottom * 2))]


def row(picture: Image.Image, y: float) -> list[Colour]:
    return [picture.getpixel((x, round(y * 2))) for x in range(picture.width)]
