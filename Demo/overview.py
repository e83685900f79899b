"""One picture of all pictures: a row for each window, a column for each action."""

from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

THUMBNAIL = (320, 180)
GAP = 16
CAPTION = 26
PAPER, INK, FAINT = (247, 246, 243), (45, 50, 56), (120, 126, 132)


def _font(size: int):
    for path in ("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",):
        if Path(path).exists():
            return ImageFont.truetype(path, size)
    return ImageFont.load_default()


def write_overview(rows, path: Path) -> None:
    """`rows`: window title, action title, picture before, picture after, for each press, window by window."""
    titles = list(dict.fromkeys(title for title, *_ in rows))
    width = THUMBNAIL[0] + GAP
    height = THUMBNAIL[1] + GAP + CAPTION
    most = max(sum(1 for row in rows if row[0] == title) for title in titles) + 1
    sheet = Image.new("RGB", (most * width + GAP, len(titles) * height + GAP), PAPER)
    draw = ImageDraw.Draw(sheet)
    font = _font(14)
    for line, title in enumerate(titles):
        presses = [row for row in rows if row[0] == title]
        cells = [(f"{title}: before", presses[0][2], FAINT), *((action, after, INK) for _, action, _, after in presses)]
        for column, (caption, picture, colour) in enumerate(cells):
            x, y = GAP + column * width, GAP + line * height
            draw.text((x, y), caption, fill=colour, font=font)
            sheet.paste(picture.resize(THUMBNAIL, Image.LANCZOS), (x, y + CAPTION))
            draw.rectangle((x - 1, y + CAPTION - 1, x + THUMBNAIL[0], y + CAPTION + THUMBNAIL[1]), outline=FAINT)
    sheet.save(path)
