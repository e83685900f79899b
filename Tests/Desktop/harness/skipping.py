"""A test that cannot run on this machine says so and is counted as skipped, never as passed."""

import shutil


class Skipped(Exception):
    """The reason, in words for people."""


def require(program: str, package: str) -> None:
    """Skips the test unless the program is installed."""
    if shutil.which(program, path="/usr/bin:/bin:/usr/sbin:/sbin") is None:
        raise Skipped(f"{program} is not installed (Debian package {package})")
