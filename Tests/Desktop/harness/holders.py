"""The holder of a shortcut, as the program under test reports it."""

import json
from pathlib import Path

from .product import run_to_end
from .session import Session
from .waiting import until

# The purposes for which desktops commonly hold the shortcuts, by action.
COMMON_PURPOSES = {
    "leftHalf": "switches to the workspace on the left",
    "rightHalf": "switches to the workspace on the right",
    "maximize": "switches to the workspace above",
    "maximizeHeight": "switches to the workspace below",
    "almostMaximize": "shows the desktop",
}


def reported_holders(session: Session, program: Path, prefix=()) -> dict[str, tuple[str, str]]:
    """Holder and purpose by action, of the shortcuts that are taken and whose holder is known."""
    status, output, errors, _ = run_to_end(session, program, "--status", "--json", prefix=prefix)
    assert status == 0, f"{output}{errors}"
    return {shortcut["action"]: (shortcut["heldBy"], shortcut["purpose"])
            for shortcut in json.loads(output)["shortcuts"] if "heldBy" in shortcut}


def until_holders(session: Session, program: Path, wanted: dict[str, tuple[str, str]], prefix=()) -> None:
    """Waits until the program reports exactly this; it finds holders in its own time.

    `prefix`: the command that runs the asking program.
    """
    until(lambda: reported_holders(session, program, prefix) == wanted, f"the holders {wanted}",
          saw=lambda: reported_holders(session, program, prefix))
    status, output, errors, _ = run_to_end(session, program, "--status", prefix=prefix)
    assert status == 0, errors
    for held_by, purpose in wanted.values():
        assert f"taken: {purpose} ({held_by})" in output, f"{purpose!r} of {held_by!r} is not in {output!r}"


def reported_obstacles(session: Session, program: Path, prefix=()) -> dict[str, str]:
    """What keeps a taken shortcut from being borrowed, as a word, by action."""
    status, output, errors, _ = run_to_end(session, program, "--status", "--json", prefix=prefix)
    assert status == 0, f"{output}{errors}"
    return {shortcut["action"]: shortcut["notBorrowable"]
            for shortcut in json.loads(output)["shortcuts"] if "notBorrowable" in shortcut}
