"""Keys that another program has in KGlobalAccel, borrowed with the user's consent.

That changes the system's settings, so a borrowed key is given back however the program ends, at the latest at its next
start."""

import json
import plistlib
import signal

from harness.holders import reported_holders, reported_obstacles
from harness.kwin import ACCEL, SCREENS, Client, KWinDesktop
from harness.kwin_holder import LEFT, REGISTER, C, KeyHolder, N, sequences
from harness.product import Product, run_to_end
from harness.waiting import until, until_equal

from . import case
from .borrowed import asks
from .kwin_actions import NATURAL, every_action, open_application
from .kwin_keys import LOOK
from .window_manager_changes import taken

HELD = {"leftHalf", "center"}
NOTE = ".local/state/tessel/borrowed-shortcuts.json"


class Lenders:
    """Two actions of another program that hold shortcuts; one of them also has a key that is not ours."""

    def __init__(self, desktop: KWinDesktop):
        self.desktop = desktop
        self.first = KeyHolder(desktop, "first", LEFT, N)
        self.second = KeyHolder(desktop, "second", C)

    def keys(self) -> tuple[set[int], set[int]]:
        return self.first.keys(), self.second.keys()

    def have_all(self, when: str) -> None:
        """Checks that their keys are theirs, and act for them."""
        until_equal(self.keys, ({LEFT, N}, {C}), f"the keys of the other program {when}")
        first, second = self.first.reported(), self.second.reported()
        for action in sorted(HELD):
            self.desktop.keyboard.press(action)
        self.first.until_reported(first + 1, when)
        self.second.until_reported(second + 1, when)

    def have_lent(self, product: Product, client: Client, when: str) -> None:
        """Checks that all six shortcuts act, for the program alone, and that the other key keeps its function."""
        assert self.keys() == ({N}, set()), f"{self.keys()} {when}"
        first, second = self.first.reported(), self.second.reported()
        every_action(self.desktop, product, client, NATURAL, SCREENS[0])
        assert (self.first.reported(), self.second.reported()) == (first, second), f"the other program got a press {when}"
        self.desktop.keyboard.chord("Control", "Alt", "N")
        self.first.until_reported(first + 1, when)


def shortcuts(desktop: KWinDesktop, program, what: str) -> set[str]:
    """The actions whose shortcut is in the state `what`, by the program's own report."""
    ended, output, errors, _ = run_to_end(desktop.session, program, "--status", "--json")
    assert ended == 0, errors
    return {each["action"] for each in json.loads(output)["shortcuts"] if each.get(what)}


def kill(desktop: KWinDesktop, product: Product) -> None:
    desktop.session.processes.end(product.process, signal.SIGKILL)
    desktop.products.remove(product)
    product.close()


class Borrowing(KWinDesktop):
    def note(self) -> str | None:
        file = self.session.home / NOTE
        return file.read_text() if file.exists() else None

    def launch_and_borrow(self) -> Product:
        product = self.launch(status=taken(HELD))
        asks(self, self.program, "--take-shortcuts")
        product.until_status("Active")
        return product


@case("desktop.kwin.borrowed")
def held_keys_are_ours_with_consent_and_their_holders_again_afterwards(program):
    with Borrowing(program) as desktop:
        editor = open_application(desktop, "mousepad")
        lenders = Lenders(desktop)
        product = desktop.launch(status=taken(HELD))
        until_equal(lambda: reported_holders(desktop.session, program),
                    {"leftHalf": ("Another program", "Their first"), "center": ("Another program", "Their second")},
                    "the holders")
        assert shortcuts(desktop, program, "canBeBorrowed") == HELD
        assert desktop.note() is None, "something was written down without consent"
        lenders.have_all("without consent")

        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        assert shortcuts(desktop, program, "borrowed") == HELD
        until_equal(lambda: {holder for holder, _ in reported_holders(desktop.session, program).values()},
                    {"Another program"}, "the lender")
        lenders.have_lent(product, editor, "with consent")

        asks(desktop, program, "--give-back-shortcuts")
        product.until_status(taken(HELD))
        lenders.have_all("after they were given back")
        assert desktop.note() is None, desktop.note()

        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        product.terminate()
        lenders.have_all("after the program has ended")
        assert desktop.note() is None, desktop.note()

        product = desktop.launch()
        lenders.have_lent(product, editor, "at the next start")


@case("desktop.kwin.borrowed.unwritten")
def nothing_is_borrowed_that_cannot_be_written_down_and_that_is_said(program):
    with Borrowing(program) as desktop:
        lenders = Lenders(desktop)
        # No folder can be made where a file is, whoever asks for it.
        in_the_way = (desktop.session.home / NOTE).parent
        in_the_way.parent.mkdir(parents=True, exist_ok=True)
        in_the_way.write_text("")
        editor = open_application(desktop, "mousepad")
        product = desktop.launch(status=taken(HELD))
        ended, _, errors, _ = run_to_end(desktop.session, program, "--take-shortcuts", seconds=20.0)
        assert ended == 1 and "the note on whose it is cannot be saved" in errors, (ended, errors)
        product.until_status(taken(HELD))
        assert reported_obstacles(desktop.session, program) == {action: "notWrittenDown" for action in HELD}
        lenders.have_all("as nothing could be written down")

        in_the_way.unlink()
        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        assert reported_obstacles(desktop.session, program) == {}
        lenders.have_lent(product, editor, "once it could be written down")
        # It has said what the matter was.
        product.terminate(silently=False)


def is_granted(desktop: KWinDesktop, key: int) -> bool:
    """Whether KGlobalAccel would let a program have the key."""
    action = ["org.example.Third", "trial", "A third program", "Their trial"]
    desktop.bus.call(ACCEL, "doRegister", "(as)", action)
    granted = desktop.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", action, sequences(key), REGISTER)[0]
    desktop.bus.call(ACCEL, "unregister", "(ss)", *action[:2])
    return granted == sequences(key)


@case("desktop.kwin.borrowed.sequence")
def a_key_of_a_sequence_stays_taken_and_says_so(program):
    with Borrowing(program) as desktop:
        holder = ["org.example.Other", "sequence", "Another program", "Their sequence"]
        desktop.bus.call(ACCEL, "doRegister", "(as)", holder)
        sequence = [([LEFT, N, 0, 0],)]
        assert desktop.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", holder, sequence, REGISTER)[0] == sequence
        if is_granted(desktop, LEFT):
            # That of Plasma 6.7 grants it, and a sequence does not keep the key alone from acting.
            editor = open_application(desktop, "mousepad")
            every_action(desktop, desktop.launch(), editor, NATURAL, SCREENS[0])
            assert desktop.bus.call(ACCEL, "shortcutKeys", "(as)", holder)[0] == sequence
            return
        product = desktop.launch(status=taken({"leftHalf"}))
        assert reported_obstacles(desktop.session, program) == {"leftHalf": "keySequence"}
        ended, _, errors, _ = run_to_end(desktop.session, program, "--take-shortcuts", seconds=20.0)
        assert ended == 1 and "it is part of a sequence of keys" in errors, (ended, errors)
        product.until_status(taken({"leftHalf"}))
        assert desktop.bus.call(ACCEL, "shortcutKeys", "(as)", holder)[0] == sequence


@case("desktop.kwin.borrowed.killed")
def keys_that_a_killed_program_had_borrowed_are_given_back_at_the_next_start_unless_the_consent_holds(program):
    with Borrowing(program) as desktop:
        editor = open_application(desktop, "mousepad")
        lenders = Lenders(desktop)
        kill(desktop, desktop.launch_and_borrow())
        assert lenders.keys() == ({N}, set()), f"nothing was left, so nothing is tested: {lenders.keys()}"
        note = desktop.note()

        product = desktop.launch()
        lenders.have_lent(product, editor, "at the next start")
        assert desktop.note() == note, f"{note} became {desktop.note()}"
        kill(desktop, product)

        preferences = desktop.session.home / ".config/tessel/preferences.plist"
        settings = plistlib.loads(preferences.read_bytes())
        preferences.write_bytes(plistlib.dumps({**settings, "borrowsShortcuts": False}))
        product = desktop.launch(status=taken(HELD))
        lenders.have_all("at the start without consent")
        assert desktop.note() is None, desktop.note()


@case("desktop.kwin.borrowed.forgotten")
def keys_that_a_killed_program_had_borrowed_are_given_back_by_forget(program):
    with Borrowing(program) as desktop:
        lenders = Lenders(desktop)
        kill(desktop, desktop.launch_and_borrow())
        asks(desktop, program, "--forget")
        lenders.have_all("after all was forgotten")
        assert not (desktop.session.home / NOTE).parent.exists(), "something was left"
        assert desktop.held_keys() == [], "keys of the killed program are left"


@case("desktop.kwin.borrowed.restarted")
def borrowed_keys_survive_another_kwin(program):
    with Borrowing(program) as desktop:
        open_application(desktop, "mousepad")
        lenders = Lenders(desktop)
        product = desktop.launch_and_borrow()
        note = desktop.note()
        # It has written its settings by then.
        assert "hot-key" in desktop.shortcut_settings()
        desktop.keyboard.close()
        desktop.stop_kwin()
        product.until_status("Waiting for permission", 15.0)
        desktop.start_kwin()
        desktop.renew_keyboard()
        lenders.first.begin_again()
        lenders.second.begin_again()
        product.until_status("Active", 20.0)
        until_equal(lambda: shortcuts(desktop, program, "borrowed"), HELD, "the borrowed shortcuts", 20.0)
        assert desktop.note() == note, f"{note} became {desktop.note()}"
        lenders.have_lent(product, open_application(desktop, "mousepad"), "after KWin was restarted")
        product.terminate()
        lenders.have_all("after the program has ended")


@case("desktop.kwin.borrowed.assigned")
def a_borrowed_key_goes_to_whom_the_user_gives_it_until_it_is_asked_for_again(program):
    with Borrowing(program) as desktop:
        editor = open_application(desktop, "mousepad")
        lenders = Lenders(desktop)
        product = desktop.launch_and_borrow()
        third = KeyHolder(desktop, "third", program="org.example.Third")
        third.set_in_settings(LEFT)
        product.until_status(taken({"leftHalf"}), 2 * LOOK)
        desktop.keyboard.press("leftHalf")
        third.until_reported(1, "after the user gave it the key")
        assert lenders.keys() == ({N}, set()), lenders.keys()
        product.terminate()
        assert (*lenders.keys(), third.keys()) == ({N}, {C}, {LEFT}), f"{lenders.keys()}, {third.keys()}"

        product = desktop.launch(status=taken({"leftHalf"}))
        assert shortcuts(desktop, program, "canBeBorrowed") == {"leftHalf"}
        asks(desktop, program, "--take-shortcuts")
        product.until_status("Active")
        every_action(desktop, product, editor, NATURAL, SCREENS[0])
        assert third.reported() == 1, "the third program got the press of a borrowed key"
        product.terminate()
        assert (*lenders.keys(), third.keys()) == ({N}, {C}, {LEFT}), f"{lenders.keys()}, {third.keys()}"


@case("desktop.kwin.borrowed.changed")
def a_list_that_the_user_changes_meanwhile_stays_as_it_is(program):
    with Borrowing(program) as desktop:
        lenders = Lenders(desktop)
        product = desktop.launch_and_borrow()
        other = N + 1
        lenders.first.set_in_settings(N, other)
        product.terminate()
        until(lambda: lenders.keys() == ({N, other}, {C}), "the user's list to stay", saw=lenders.keys)
        assert desktop.note() is None, desktop.note()
        assert desktop.held_keys() == [], "keys outlived the program"
