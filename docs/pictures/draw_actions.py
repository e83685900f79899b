#!/usr/bin/python3
"""Draws actions.png, the picture in the README, from the demonstration's pictures.

usage: draw_actions.py FOLDER        (FOLDER is the one that was given to Demo/show --pictures)

Run the demonstration as an ordinary user: the editor warns root, in red.
"""

import sys
from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

SHOWN = [
    ("editor-1-left-half-after", "Ctrl+Alt+←", "left half"),
    ("editor-2-right-half-after", "Ctrl+Alt+→", "right half"),
    ("editor-3-center-after", "Ctrl+Alt+C", "center"),
    ("editor-4-maximize-after", "Ctrl+Alt+↑", "maximize"),
    ("editor-5-almost-maximize-after", "Ctrl+Alt+D", "almost maximize"),
    ("editor-6-maximize-height-after", "Ctrl+Alt+↓", "maximize height"),
]
COLUMNS = 3
WIDTH, HEIGHT, GAP, CAPTION = 480, 270, 24, 40
PAPER, INK, FAINT = (247, 246, 243), (45, 50, 56), (110, 116, 122)
FONTS = Path("/usr/share/fonts/truetype/dejavu")


def main() -> None:
    folder = Path(sys.argv[1])
    rows = -(-len(SHOWN) // COLUMNS)
    size = (GAP + COLUMNS * (WIDTH + GAP), GAP + rows * (CAPTION + HEIGHT + GAP))
    sheet = Image.new("RGB", size, PAPER)
    draw = ImageDraw.Draw(sheet)
    bold = ImageFont.truetype(str(FONTS / "DejaVuSans-Bold.ttf"), 19)
    plain = ImageFont.truetype(str(FONTS / "DejaVuSans.ttf"), 19)
    for number, (name, keys, action) in enumerate(SHOWN):
        x = GAP + number % COLUMNS * (WIDTH + GAP)
        y = GAP + number // COLUMNS * (CAPTION + HEIGHT + GAP)
        draw.text((x, y), keys, INK, bold)
        draw.text((x + draw.textlength(keys + "  ", bold), y), action, FAINT, plain)
        with Image.open(folder / f"{name}.png") as picture:
            sheet.paste(picture.resize((WIDTH, HEIGHT), Image.Resampling.LANCZOS), (x, y + CAPTION))
    sheet.quantize(128, dither=Image.Dither.NONE).save(Path(__file__).with_name("actions.png"), optimize=True)


if __name__ == "__main__":
    main()
