"""A test that cannot run on this machine reports so and counts as skipped, never as passed."""

import shutil


class Skipped(Exception):
    """The reason, for the reader of the test's output."""


def require(program: str, package: str) -> None:
    """Skips the test unless the program is installed."""
    if shutil.which(program, path="/usr/bin:/bin:/usr/sbin:/sbin") is None:
        raise Skipped(f"{program} is not installed (Debian package {package})")


def require_module(name: str, version: str, package: str) -> None:
    """Skips the test unless Python's introspection data of the library is installed."""
    try:
        import gi

        gi.require_version(name, version)
    except (ImportError, ValueError):
        raise Skipped(f"no {name} {version} for Python (Debian package {package})") from None
