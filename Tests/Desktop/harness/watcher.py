"""Records every geometry of one window."""

from Xlib import X, display

from .rect import Rect


class GeometryWatcher:
    def __init__(self, name: str, identifier: int):
        self.connection = display.Display(name)
        self.connection.set_error_handler(lambda *_: None)
        self.window = self.connection.create_resource_object("window", identifier)
        self.root = self.connection.screen().root
        self.window.change_attributes(event_mask=X.StructureNotifyMask)
        self.connection.sync()
        geometry = self.window.get_geometry()
        place = self.root.translate_coords(self.window, 0, 0)
        self._last = Rect(place.x, place.y, geometry.width, geometry.height)

    def changes(self) -> list[Rect]:
        """The client rectangles since the last call, in order, each different from the one before it.

        The server's event has the position inside the decoration; the window manager sends the position on the screen
        in an event of its own. So only the latter event counts for the position.
        """
        self.connection.sync()
        found = []
        while self.connection.pending_events():
            seen = self.connection.next_event()
            if seen.type != X.ConfigureNotify or seen.window != self.window:
                continue
            corner = (seen.x, seen.y) if seen.send_event else (self._last.x, self._last.y)
            rect = Rect(*corner, seen.width, seen.height)
            if rect != self._last:
                self._last = rect
                found.append(rect)
        return found

    def close(self) -> None:
        self.connection.close()
