"""What docs/keys.md tells users to do, done as it stands there."""

import re
from pathlib import Path

PAGE = Path(__file__).resolve().parents[3] / "docs" / "keys.md"
NAME = "tessel --perform top-left"
# The key that the page binds, by its places on the keyboard.
CHORD = ("Control", "Alt", "N")


def block(heading: str, program: Path) -> str:
    """The block under a heading, with the program under test in the place of the installed one."""
    found = re.search(rf"^### {re.escape(heading)}\n.*?^```\w*\n(.*?)^```$", PAGE.read_text(), re.DOTALL | re.MULTILINE)
    assert found and NAME in found[1], f"no block of {heading} in {PAGE}"
    return found[1].replace(NAME, f"{program}{NAME.removeprefix('tessel')}")
