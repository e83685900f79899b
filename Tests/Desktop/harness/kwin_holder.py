"""Another program that holds keys in KGlobalAccel, and what the system's settings do with keys."""

from .kwin import ACCEL, Gio, GLib, KWinDesktop
from .waiting import until

CONTROL_ALT = 0x0C000000
LEFT, C, N = CONTROL_ALT | 0x01000012, CONTROL_ALT | ord("C"), CONTROL_ALT | ord("N")
COMPONENT_INTERFACE = "org.kde.kglobalaccel.Component"
# In use, and the keys given here count.
REGISTER = 6


def sequences(*keys: int) -> list:
    return [([key, 0, 0, 0],) for key in keys]


class KeyHolder:
    """One action of another program: the keys that it has, and the presses that it was told of."""

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
        """As the program does that is started anew: it takes what the settings have for it."""
        self.desktop.bus.call(ACCEL, "doRegister", "(as)", self.name)
        self.desktop.bus.call(ACCEL, "setShortcutKeys", "(asa(ai)u)", self.name, [], 2)

    def set_in_settings(self, *keys: int) -> None:
        """As the system's settings do it: each key is taken from whoever has it before."""
        for key in keys:
            owner = self.desktop.bus.call(ACCEL, "actionList", "((ai))", ([key, 0, 0, 0],))[0]
            if owner and owner[:2] != self.name[:2]:
                others = [each for each in self.desktop.bus.call(ACCEL, "shortcutKeys", "(as)", owner)[0]
                          if each[0][0] != key]
                self.desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", owner, others)
        self.desktop.bus.call(ACCEL, "setForeignShortcutKeys", "(asa(ai))", self.name, sequences(*keys))

    def keys(self) -> set[int]:
        """Its keys; KWin 6.7 keeps no order, and those before it the place of one that was not granted."""
        return {each[0][0] for each in self.desktop.bus.call(ACCEL, "shortcutKeys", "(as)", self.name)[0]} - {0}

    def told(self) -> int:
        """How often it was told of a press so far. What KWin has signalled before an answer has come before it."""
        self.desktop.bus.call(ACCEL, "shortcutKeys", "(as)", self.name)
        while GLib.MainContext.default().iteration(False):
            pass
        return self.presses

    def until_told(self, times: int, what: str) -> None:
        until(lambda: self.told() == times, f"{self.name[1]} to be told of {times} presses: {what}", saw=self.told)
