"""A program that gives its windows and the root window whatever it likes, over a connection of its own."""

from Xlib import X, Xutil, display

from .windows import Windows

# The longest request that every server accepts.
CHUNK = 200_000


class HostileClient:
    def __init__(self, name: str):
        self.connection = display.Display(name)
        # Windows go when they like; requests for them fail, and that is nobody's business.
        self.connection.set_error_handler(lambda *_: None)
        self.root = self.connection.screen().root

    def close(self) -> None:
        self.connection.close()

    def window(self, identifier: int):
        return self.connection.create_resource_object("window", identifier)

    def open(self, class_name: str | None = None, place=(240, 180, 420, 300)):
        """A window that is mapped when the server gets to it."""
        window = self.root.create_window(*place, 0, X.CopyFromParent)
        # To look for a free place among thousands takes window managers long.
        window.set_wm_normal_hints(flags=Xutil.USPosition)
        # Nor is it of interest how long they take to pass the focus on.
        window.set_wm_hints(flags=Xutil.InputHint, input=0)
        if class_name is not None:
            window.set_wm_class(class_name.lower(), class_name)
        window.map()
        self.connection.flush()
        return window

    def put(self, window, name: str, kind: str, width: int, value: bytes | list[int]) -> None:
        """Gives a window a property of that type, in items of that many bits."""
        atom, kind = self.connection.intern_atom(name), self.connection.intern_atom(kind)
        window.change_property(atom, kind, width, value)
        self.connection.sync()

    def put_endless(self, window, name: str, mebibytes: int) -> int:
        """Gives a window as long a text as the server takes; gives its length."""
        atom, kind = self.connection.intern_atom(name), self.connection.intern_atom("STRING")
        chunk = b"x" * CHUNK
        window.change_property(atom, kind, 8, b"")
        for _ in range((mebibytes << 20) // CHUNK):
            window.change_property(atom, kind, 8, chunk, X.PropModeAppend)
        self.connection.sync()
        value = window.get_property(atom, X.AnyPropertyType, 0, 0)
        return value.bytes_after if value else 0

    def remove(self, window, name: str) -> None:
        window.delete_property(self.connection.intern_atom(name))
        self.connection.sync()

    def is_managed(self, windows: Windows, window) -> bool:
        return window.id in windows.managed()
