"""The commands that docs/keys.md gives to users, run as written."""

import re
from pathlib import Path

PAGE = Path(__file__).resolve().parents[3] / "docs" / "keys.md"
NAME = "tessel --perform top-left"
# The key that the page binds, by keyboard positions.
CHORD = ("Control", "Alt", "N")


def block(heading: str, program: Path) -> str:
    """The block under a heading, with the path of the program under test instead of the installed one."""
    found = re.search(rf"^### {re.escape(heading)}\n.*?^```\w*\n(.*?)^```$", PAGE.read_text(), re.DOTALL | re.MULTILINE)
    assert found and NAME in found[1], f"no block of {heading} in {PAGE}"
    return found[1].replace(NAME, f"{program}{NAME.removeprefix('tessel')}")
