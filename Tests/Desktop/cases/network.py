"""The program communicates with the X server, the message bus and its own command line, and with nothing beyond this
machine."""

import os
import socket
from pathlib import Path

from harness.applications import APPLICATIONS, own_window
from harness.desktop import Desktop
from harness.product import run_to_end

from . import case
from .rules import OWN, is_placed, launch, start_with_rules

PROTOCOLS = ("tcp", "tcp6", "udp", "udp6", "udplite", "udplite6", "raw", "raw6", "icmp", "icmp6", "packet")


def sockets(process_id: int) -> set[str]:
    """The inodes of the sockets that a process has."""
    found = set()
    for descriptor in Path(f"/proc/{process_id}/fd").iterdir():
        try:
            target = os.readlink(descriptor)
        except FileNotFoundError:
            continue
        if target.startswith("socket:["):
            found.add(target.removeprefix("socket:[").removesuffix("]"))
    return found


def table(process_id: int, protocol: str) -> list[list[str]]:
    """The rows of the kernel's table of sockets of one protocol, in columns."""
    try:
        return [line.split() for line in Path(f"/proc/{process_id}/net/{protocol}").read_text().splitlines()[1:]]
    except FileNotFoundError:
        return []


def of_the_internet(process_id: int) -> list[str]:
    own = sockets(process_id)
    return [f"{protocol}: {' '.join(row)}" for protocol in PROTOCOLS for row in table(process_id, protocol)
            if own & set(row)]


@case("desktop.no-internet")
def it_has_no_socket_of_the_internet(program):
    # If this socket is not found here, the checks below prove nothing.
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as witness:
        witness.bind(("127.0.0.1", 0))
        assert of_the_internet(os.getpid()), "a socket of the internet is not recognized"
    with Desktop(program, name="no-internet") as desktop:
        desktop.start_window_manager("openbox")
        product = start_with_rules(desktop, {OWN: "maximize"})
        desktop.open(APPLICATIONS["mousepad"])

        def look(when: str) -> None:
            product.until_at_rest()
            found = of_the_internet(product.process.pid)
            assert not found, f"{when}: {found}"
            own = sockets(product.process.pid)
            known = {inode for row in table(product.process.pid, "unix") for inode in row} | {
                inode for row in table(product.process.pid, "netlink") for inode in row}
            assert own and own <= known, f"{when}: sockets of no known kind: {own - known}"

        look("at the start")
        desktop.press(product, "leftHalf")
        look("after a press")
        is_placed(desktop, launch(desktop, own_window()), "maximize")
        look("after a rule")
        for options in (("--status",), ("--rule", "org.example.Another", "center"), ("--perform", "center")):
            status, _, errors, _ = run_to_end(desktop.session, program, *options)
            assert status == 0, errors
            look(f"after {options}")
