"""Another program that holds keys in KGlobalAccel, and the key changes of the system's settings."""

from .kwin import ACCEL, Gio, GLib, KWinDesktop
from .waiting import until

CONTROL_ALT = 0x0C000000
LEFT, C, N = CONTROL_ALT | 0x01000012, CONTROL_ALT | ord("C"), CONTROL_ALT | ord("N")
COMPONENT_INTERFACE = "org.kde.kglobalaccel.Component"
# Flags of KGlobalAccel: the action is active, and the keys given here apply.
REGISTER = 6


def sequences(*keys: int) -> list:
    return [([key, 0, 0, 0],) for key in keys]


class KeyHolder:
    """One action of another program: its keys, and the presses that were reported to it."""

    def __init__(self, desktop: KWinDesktop, action: str, *keys: int, program: str = "org.example.Other"):
        self.desktop = desktop
        self.name = [program, action, "Another program", f"Their {action}"]
        self.presses = 0
        self.register(*keys)
        desktop.bus.connection.signal_subscribe(
            ACCEL[0], COMPONENT_INTERFACE, "globalShortcutPressed", None, None, Gio.DBusSignalFlags.NONE, self._pressed
        )

    def _pressed(self, _connection, _sender, _path, _interface, _signal, values) -> None:
        if values.unpack()[:2] == tuple(self.name[:2]):
            self.presses += 1

    def register(self, *keys: int) -> None:
        self.desktop.bus.call(ACCEL, "doRegister", "(as)", self.name)
        granted = self.desktop.bus.call(
            ACCEL, "setShortcutKeys", "(asa(ai)u)", self.name, sequences(*keys), REGISTER)[0]
        assert sorted(granted) == sorted(sequences(*keys)), f"{self.name} got {granted}"

    def begin_again(self) -> None:
        """Registers like a newly started program: it takes the keys that the settings have for it."""
        self.desktop.bus.call(ACCEL, "doRegister", "(as)", self.name)
        self.desktop.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", self.name, [], 2)

    def set_in_settings(self, *keys: int) -> None:
        """Changes keys as the system's settings do: each key is first taken from its present holder."""
        for key in keys:
            owner = self.desktop.bus.call(ACCEL, "actionList", "((ai))", ([key, 0, 0, 0],))[0]
            if owner and owner[:2] != self.name[:2]:
                others = [each for each in self.desktop.bus.call(ACCEL, "shortcutKeys", "(as)", owner)[0]
                          if each[0][0] != key]
                self.desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", owner, others)
        self.desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", self.name, sequences(*keys))

    def keys(self) -> set[int]:
        """Its keys. KWin 6.7 keeps no order, and earlier versions keep the place of a key that was not granted."""
        return {each[0][0] for each in self.desktop.bus.call(ACCEL, "shortcutKeys", "(as)", self.name)[0]} - {0}

    def reported(self) -> int:
        """The number of presses reported so far. KWin's signals arrive before any later reply."""
        self.desktop.bus.call(ACCEL, "shortcutKeys", "(as)", self.name)
        while GLib.MainContext.default().iteration(False):
            pass
        return self.presses

    def until_reported(self, times: int, what: str) -> None:
        until(lambda: self.reported() == times, f"{self.name[1]} to get {times} presses: {what}", saw=self.reported)
