"""Who holds a shortcut, as the program under test says."""

import json
from pathlib import Path

from .product import run_to_end
from .session import Session
from .waiting import until


def told_holders(session: Session, program: Path) -> dict[str, tuple[str, str]]:
    """Holder and purpose by action, of the shortcuts that are taken and whose holder is known."""
    status, output, errors, _ = run_to_end(session, program, "--status", "--json")
    assert status == 0, f"{output}{errors}"
    return {shortcut["action"]: (shortcut["heldBy"], shortcut["purpose"])
            for shortcut in json.loads(output)["shortcuts"] if "heldBy" in shortcut}


def until_holders(session: Session, program: Path, wanted: dict[str, tuple[str, str]]) -> None:
    """Waits until the program says this and nothing else; it finds out on its own time."""
    until(lambda: told_holders(session, program) == wanted, f"the holders {wanted}",
          saw=lambda: told_holders(session, program))
    status, output, errors, _ = run_to_end(session, program, "--status")
    assert status == 0, errors
    for held_by, purpose in wanted.values():
        assert f"taken: {purpose} ({held_by})" in output, f"{purpose!r} of {held_by!r} is not in {output!r}"
