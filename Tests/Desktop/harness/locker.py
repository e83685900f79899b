"""A screen locker: its grabs exclude all other clients until it unlocks."""

from Xlib import X, display

from .waiting import until


class Locker:
    """Covers the whole screen and grabs keyboard and pointer, as lockers do."""

    def __init__(self, name: str):
        self.connection = display.Display(name)
        screen = self.connection.screen()
        self.curtain = screen.root.create_window(
            0, 0, screen.width_in_pixels, screen.height_in_pixels, 0, screen.root_depth,
            background_pixel=screen.black_pixel, override_redirect=True, event_mask=X.KeyPressMask,
        )

    def lock(self) -> None:
        self.curtain.map()
        self.curtain.raise_window()
        now, later = X.CurrentTime, X.GrabModeAsync
        # Another client may hold a key or a menu at this moment.
        until(lambda: self.curtain.grab_keyboard(False, later, later, now) == X.GrabSuccess, "the keyboard to be free")
        until(
            lambda: self.curtain.grab_pointer(False, 0, later, later, X.NONE, X.NONE, now) == X.GrabSuccess,
            "the pointer to be free",
        )

    def could_take_pointer(self) -> bool:
        """Whether no other client holds the grab at this moment."""
        later = X.GrabModeAsync
        free = self.connection.screen().root.grab_pointer(False, 0, later, later, X.NONE, X.NONE, X.CurrentTime) == X.GrabSuccess
        self.connection.ungrab_pointer(X.CurrentTime)
        self.connection.sync()
        return free

    def typed(self) -> int:
        """The number of keys that it has received since the last call."""
        self.connection.sync()
        events = [self.connection.next_event() for _ in range(self.connection.pending_events())]
        return sum(event.type == X.KeyPress for event in events)

    def unlock(self) -> None:
        self.connection.ungrab_keyboard(X.CurrentTime)
        self.connection.ungrab_pointer(X.CurrentTime)
        self.curtain.unmap()
        self.connection.sync()

    def close(self) -> None:
        self.connection.close()
