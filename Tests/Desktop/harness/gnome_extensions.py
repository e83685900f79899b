"""Extensions of GNOME Shell, which loads scripts before version 45 and modules since."""

import json
import re
import shutil
from pathlib import Path

# The tests' own extension.
EYES = "eyes@example.org"
SOURCES = Path(__file__).resolve().parent / "gnome_eyes"


def form_of(version: str) -> str:
    """The form that a shell loads, by its version."""
    return "legacy" if int(re.search(r"GNOME Shell (\d+)", version)[1]) < 45 else "esm"


def install_eyes(folder: Path, form: str) -> None:
    folder.mkdir(parents=True)
    core = (SOURCES / "core.js").read_text()
    (folder / "extension.js").write_text((SOURCES / f"{form}.js").read_text().replace("@CORE@", core))
    (folder / "metadata.json").write_text(json.dumps({
        "uuid": EYES, "name": "Eyes",
        "description": "Tells the tests what the shell knows, independently of the program under test",
        "shell-version": [str(version) for version in range(43, 61)],
    }))


def put_extension(source: Path, place: Path, how: str) -> None:
    """Puts the program's extension into the home: "absent", "linked" as its developer has it, "outdated", or
    current."""
    if how == "linked":
        place.symlink_to(source)
    elif how != "absent":
        shutil.copytree(source, place)
    if how == "outdated":
        # As a program of some years ago left it.
        facts = json.loads((place / "metadata.json").read_text())
        del facts["revision"]
        facts |= {"version-name": "0.1", "shell-version": ["40", "41", "42"]}
        (place / "metadata.json").write_text(json.dumps(facts))
