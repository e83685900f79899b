#!/usr/bin/python3
"""Every symbol that the code names exists, and uses only SVG Tiny 1.2.

usage: symbols.py ROOT

Prints one line for each fault and fails if there is any. A text in quotation marks counts as the name of a symbol if
its first word is that of a symbol ("rectangle.…") or if its line mentions a symbol.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

FOLDERS = ["CorvidKitCore", "TesselCore", "Platform", "CorvidKit", "Tessel"]
SOURCES = {".h", ".cpp", ".qml"}
QUOTED = re.compile(r'"([a-z][a-z0-9]*(?:\.[a-z0-9]+)*)"')
SPEAKS_OF_A_SYMBOL = re.compile(r"symbol", re.IGNORECASE)

SVG = "{http://www.w3.org/2000/svg}"
ROOT_ATTRIBUTES = {"width": "24", "height": "24", "viewBox": "0 0 24 24"}
PATH_ATTRIBUTES = {
    "d": r"[MLHVAQCZz0-9eE .,mlhvaqc-]+",
    "fill": r"#000|none",
    "fill-rule": r"evenodd",
    "opacity": r"0?\.\d+",
    "stroke": r"#000",
    "stroke-width": r"[12](\.\d+)?",
    "stroke-linecap": r"round",
    "stroke-linejoin": r"round",
}


def drawing_faults(text: str) -> list[str]:
    """The faults in a symbol's file."""
    try:
        root = ElementTree.fromstring(text)
    except ElementTree.ParseError as error:
        return [f"is not XML: {error}"]
    found = []
    if root.tag != f"{SVG}svg" or root.attrib != ROOT_ATTRIBUTES:
        found.append("is not an svg of 24 by 24 with the viewBox 0 0 24 24, or has other attributes")
    if len(root) == 0:
        found.append("is empty")
    for element in root.iter():
        if element is root:
            continue
        if element.tag != f"{SVG}path" or not element.get("d"):
            found.append(f"has a <{element.tag.removeprefix(SVG)}> where there should be a <path> that draws")
        for name, value in element.attrib.items():
            if not re.fullmatch(PATH_ATTRIBUTES.get(name, "(?!)"), value):
                found.append(f'has {name}="{value}"')
    return found


def named_symbols(root: Path, families: set[str]) -> list[tuple[str, int, str]]:
    """File, line and name of each symbol that the sources below `root` request."""
    found = []
    files = (file for folder in FOLDERS for file in (root / folder).rglob("*") if file.suffix in SOURCES)
    for file in sorted(files):
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), start=1):
            is_about_symbols = SPEAKS_OF_A_SYMBOL.search(line) is not None
            for name in QUOTED.findall(line):
                # The property that holds a name is not one itself.
                if name != "symbol" and is_about_symbols or ("." in name and name.split(".")[0] in families):
                    found.append((file.relative_to(root).as_posix(), number, name))
    return found


def faults(root: Path) -> list[str]:
    folder = root / "Resources/symbols"
    drawings = {file.name.removesuffix(".svg"): file for file in sorted(folder.glob("*.svg"))}
    found = [f"Resources/symbols/{file.name}: {fault}"
             for file in drawings.values() for fault in drawing_faults(file.read_text(encoding="utf-8"))]
    named = named_symbols(root, {name.split(".")[0] for name in drawings})
    if not named:
        found.append("The sources name no symbol at all: is this the right folder?")
    found += [f"{path}:{number}: there is no symbol '{name}' in Resources/symbols"
              for path, number, name in named if name not in drawings]
    return found


def main() -> int:
    found = faults(Path(sys.argv[1]))
    for fault in found:
        print(fault)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
