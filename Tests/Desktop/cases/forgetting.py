"""The files that the program keeps for its user, and their removal."""

import json
import os
import signal

from harness.desktop import Desktop
from harness.popover import Popover
from harness.product import run_to_end

from . import case
from .remote import ask

EXTENSION = ".local/share/gnome-shell/extensions/tessel@corvid.org"


def kept_at(home):
    """Everything in a home that is named after the program."""
    return sorted(
        str(path.relative_to(home)) for path in home.rglob("*") if "tessel" in str(path.relative_to(home)).lower()
    )


def keeps_everything(session, program):
    """The files of a user who has used every function."""
    session.settings("<key>enabled</key><true/>")
    session.configure(".config/tessel/preferences.plist.unreadable-20260101T000000Z", "broken")
    session.configure(".local/state/tessel/gnome-shell-extension-has-worked", "")
    for name in ("metadata.json", "extension.js"):
        session.configure(f"{EXTENSION}/{name}", "{}")
    session.run([os.environ["TESSEL_LOGIN_ITEM"], str(program)])


@case("desktop.forget.everything")
def it_ends_and_leaves_nothing_in_the_home(program):
    with Desktop(program, name="forget.1") as first, Desktop(program, name="forget.2") as second:
        session = first.session
        # Two displays of one user.
        shared = {name: session.environment[name] for name in ("HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR")}
        second.session.environment |= shared
        before = [path for path in sorted(session.home.rglob("*")) if ".config/tessel" not in str(path)]
        keeps_everything(session, program)
        products = []
        for desktop in (first, second):
            desktop.start_window_manager("openbox")
            products.append(desktop.launch())
            products[-1].until_status("Active")
        ask(first, "--rule", "org.example.Editor", "maximize")
        popover = Popover(first, products[0])
        popover.ask_to_open()
        popover.until_open()
        popover.close()
        kept = kept_at(session.home)
        assert kept, "it keeps nothing"
        reported = ask(first, "--forget").splitlines()
        assert [product.ended() for product in products] == [0, 0]
        assert kept_at(session.home) == [], f"{kept_at(session.home)} of {kept}"
        named = [line.removeprefix("removed ") for line in reported]
        assert f"{session.home}/.config/autostart/org.corvid.Tessel.desktop" in named, reported
        assert set(named) <= {f"{session.home}/{path}" for path in kept}, reported
        # Files that were not the program's are still there.
        assert [path for path in before if not path.exists()] == []
        assert ask(first, "--forget") == "there was nothing to forget\n"
        assert json.loads(ask(first, "--forget", "--json")) == {"done": True, "removed": []}


@case("desktop.forget.hangs")
def it_removes_nothing_under_one_that_does_not_end(program):
    with Desktop(program, name="forget.hangs") as desktop:
        keeps_everything(desktop.session, program)
        desktop.start_window_manager("openbox")
        product = desktop.launch()
        product.until_status("Active")
        kept = kept_at(desktop.session.home)
        os.kill(product.process.pid, signal.SIGSTOP)
        try:
            ended, output, errors, _ = run_to_end(desktop.session, program, "--forget")
        finally:
            os.kill(product.process.pid, signal.SIGCONT)
        assert ended == 1 and output == "" and "answer" in errors, f"{ended}, {output!r}, {errors!r}"
        assert kept_at(desktop.session.home) == kept
