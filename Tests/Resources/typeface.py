#!/usr/bin/python3
"""The program's typeface has every character of its texts and key caps.

usage: typeface.py ROOT

The system's fonts cover the scripts that the typeface does not have (Chinese, Japanese, Korean).
"""

import sys
import unicodedata
from pathlib import Path

from catalogues import listed, read
from fontTools.ttLib import TTFont

KEY_CAPS = "⌃⌥⇧⌘←→↑↓↩⇥⌫⎋−·…"
OTHER_WRITING = {"ja", "ko", "zh_CN"}
STYLES = {"Regular": 400, "Medium": 500, "SemiBold": 600}
MOST_BYTES = 500_000


def needed(root: Path) -> set[str]:
    characters = set(KEY_CAPS) | {chr(code) for code in range(0x21, 0x7F)}
    for table in listed(root, "TESSEL_TEXT_TABLES"):
        for language in set(listed(root, "TESSEL_LANGUAGES")) - OTHER_WRITING:
            text = (root / f"Resources/translations/{table}_{language}.ts").read_text(encoding="utf-8")
            for forms in read(text, table, language).translations.values():
                characters.update("".join(forms))
    return characters


def main() -> int:
    root = Path(sys.argv[1])
    files = {style: root / f"Resources/fonts/TesselUI-{style}.otf" for style in STYLES}
    found = []
    for style, file in files.items():
        font = TTFont(file)
        missing = sorted(needed(root) - {chr(code) for code in font.getBestCmap()})
        found += [f"{file.name}: lacks {character} ({unicodedata.name(character)})" for character in missing]
        family = font["name"].getDebugName(16) or font["name"].getDebugName(1)
        if (family, font["OS/2"].usWeightClass) != ("Tessel UI", STYLES[style]):
            found.append(f"{file.name}: is {family} of weight {font['OS/2'].usWeightClass}")
    if sum(file.stat().st_size for file in files.values()) > MOST_BYTES:
        found.append(f"The fonts have more than {MOST_BYTES} bytes together.")
    for fault in found:
        print(fault)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
