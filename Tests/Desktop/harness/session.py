"""A user's session: a fresh home, a runtime directory, an environment and a message bus."""

import os
import plistlib
import shutil
import tempfile
from pathlib import Path

from .processes import Processes
from .surroundings import surround
from .waiting import until


# The reasons for which the program opens its popover by itself, all noted as done.
SEEN = "".join(f"<key>{reason}</key><true/>" for reason in ("start", "permission", "shortcuts"))


class Session:
    """Lives in a fresh directory that is removed at the end (kept if TESSEL_DESKTOP_KEEP is set).

    The user has been shown already what the program shows by itself, unless the test says `be_new`.
    """

    def __init__(self) -> None:
        # The words before each command, as where another user has to run it.
        self.prefix: list[str] = []
        # Whether the user has seen all that the program shows by itself.
        self.is_welcomed = True
        self.directory = Path(tempfile.mkdtemp(prefix="tessel-desktop-"))
        self.home = self.directory / "home"
        self.runtime = self.directory / "run"
        self.logs = self.directory / "logs"
        for folder in (self.home / ".config", self.logs):
            folder.mkdir(parents=True)
        self.runtime.mkdir(mode=0o700)
        self.processes = Processes(self.logs)
        self.environment = surround(self.directory, self.home) | {
            "PATH": "/usr/bin:/bin",
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.home / ".config"),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "XDG_SESSION_TYPE": "x11",
            # Not the machine's login manager, whose session may be locked. A test that needs one starts it there.
            "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.runtime}/system-bus",
            # Settings are in files of the fresh home, without a settings service.
            "GSETTINGS_BACKEND": "keyfile",
            "NO_AT_BRIDGE": "1",
            "QT_QPA_PLATFORM": "xcb",
            "GDK_BACKEND": "x11",
            "LIBGL_ALWAYS_SOFTWARE": "1",
        }
        self.settings("")
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LSAN_OPTIONS"):
            if name in os.environ:
                self.environment[name] = os.environ[name]

    def enter_display(self, display: str) -> None:
        """Names the display and starts the bus: services that the bus starts must know the display."""
        self.environment["DISPLAY"] = display
        self.start_bus()

    def start_bus(self) -> None:
        """Starts the message bus, whose services get the environment as it is now."""
        address = f"unix:path={self.runtime}/bus"
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"], "bus")
        until((self.runtime / "bus").exists, "the session bus")

    def start(self, command: list[str], log: str, extra: dict[str, str] | None = None, **options):
        return self.processes.start(command, {**self.environment, **(extra or {})}, log, **options)

    def run(self, command: list[str], extra: dict[str, str] | None = None) -> str:
        return self.processes.run(command, {**self.environment, **(extra or {})})

    def configure(self, path: str, text: str) -> None:
        """Writes a file below the home directory."""
        file = self.home / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def settings(self, entries: str) -> Path:
        """Writes the program's settings file with these entries of a property list's dictionary; gives its path."""
        if self.is_welcomed:
            entries += f"<key>openedFor</key><dict>{SEEN}</dict>"
        self.configure(
            ".config/tessel/preferences.plist",
            '<?xml version="1.0" encoding="UTF-8"?>\n'
            '<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">\n'
            f'<plist version="1.0"><dict>{entries}</dict></plist>\n',
        )
        return self.home / ".config/tessel/preferences.plist"

    def be_new(self) -> None:
        """From now on the user is one who has never started the program."""
        self.is_welcomed = False
        shutil.rmtree(self.home / ".config/tessel")

    def rules(self, rules: dict[str, str]) -> Path:
        """Writes the program's settings with these app rules; gives their path."""
        entries = "".join(f"<key>{name}</key><string>{action}</string>" for name, action in rules.items())
        return self.settings(f"<key>rules</key><dict>{entries}</dict>")

    @staticmethod
    def settings_of(path: Path) -> dict:
        """The user's settings, read by the tests' own parser, without the program's notes for itself."""
        values = plistlib.loads(path.read_bytes())
        own = ("updateReminder", "openedFor", "awaitsLogin")
        return {key: value for key, value in values.items() if not key.startswith(own)}

    def install(self, identifier: str, entry: str) -> None:
        """Installs an application for this user: a desktop entry with these lines."""
        self.configure(
            f".local/share/applications/{identifier}.desktop",
            f"[Desktop Entry]\nType=Application\nName={identifier}\nExec=false\n{entry}\n",
        )

    def log_text(self) -> str:
        """The end of every log, for a failure report."""
        parts = []
        for log in sorted(self.logs.glob("*.log")):
            lines = log.read_text(errors="replace").splitlines()[-12:]
            parts.append(f"--- {log.name}\n" + "\n".join(lines))
        return "\n".join(parts)

    def close(self) -> None:
        try:
            self.processes.end_all()
        finally:
            if "TESSEL_DESKTOP_KEEP" not in os.environ:
                shutil.rmtree(self.directory)
