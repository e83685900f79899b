"""A client that sets any properties on its windows and the root window, over a connection of its own."""

from Xlib import X, Xutil, display

from .windows import Windows

# The longest request that every server accepts.
CHUNK = 200_000


class HostileClient:
    def __init__(self, name: str):
        self.connection = display.Display(name)
        # Windows may vanish at any time, so failed requests for them are no fault.
        self.connection.set_error_handler(lambda *_: None)
        self.root = self.connection.screen().root

    def close(self) -> None:
        self.connection.close()

    def window(self, identifier: int):
        return self.connection.create_resource_object("window", identifier)

    def open(self, class_name: str | None = None, place=(240, 180, 420, 300)):
        """A window that is mapped as soon as the server handles the request."""
        window = self.root.create_window(*place, 0, X.CopyFromParent)
        # Without a position of its own: window managers take long to find a free place among thousands.
        window.set_wm_normal_hints(flags=Xutil.USPosition)
        # The time that they take to pass the focus on does not matter either.
        window.set_wm_hints(flags=Xutil.InputHint, input=0)
        if class_name is not None:
            window.set_wm_class(class_name.lower(), class_name)
        window.map()
        self.connection.flush()
        return window

    def put(self, window, name: str, kind: str, width: int, value: bytes | list[int]) -> None:
        """Sets a property of a window, of that type, in items of that many bits."""
        atom, kind = self.connection.intern_atom(name), self.connection.intern_atom(kind)
        window.change_property(atom, kind, width, value)
        self.connection.sync()

    def put_endless(self, window, name: str, mebibytes: int) -> int:
        """Sets the longest text that the server accepts as a property. Returns its length."""
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
