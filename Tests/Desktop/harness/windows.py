"""The windows as X server and window manager report them: their number, geometry and state.

A window's frame is its visible part: the client's rectangle with the window manager's decoration around it
(_NET_FRAME_EXTENTS) and without the shadow that the application draws itself (_GTK_FRAME_EXTENTS).
"""

import math
import select
import time

from Xlib import X, Xutil, display, error
from Xlib.ext import res
from Xlib.protocol import event

from .rect import Rect
from .waiting import PATIENCE, Expired, until

NORTH_WEST = 1
FROM_A_PAGER = 2
REMOVE, ADD = 0, 1
# The time in seconds after which a fence sends its request again, and the largest width of its window.
FENCE_INTERVAL = 1.0
WIDEST_FENCE = 1000


class Windows:
    def __init__(self, name: str):
        self.connection = display.Display(name)
        # A window may vanish between a request and its reply. The caller gets the exception; Xlib's printed message is
        # suppressed.
        self.connection.set_error_handler(lambda *_: None)
        self.root = self.connection.screen().root
        self._fence = self.root.create_window(-2000, -50, 10, 10, 0, X.CopyFromParent, event_mask=X.StructureNotifyMask)
        self._fence_width = 10

    def close(self) -> None:
        self.connection.close()

    # Properties

    def atom(self, name: str) -> int:
        return self.connection.intern_atom(name)

    def cardinals(self, window, name: str) -> list[int] | None:
        """A property of 32-bit items, or None without it or without the window."""
        try:
            # One request, because a property that is deleted between two would give half of each state.
            value = window.get_property(self.atom(name), X.AnyPropertyType, 0, 1 << 16)
        except (error.BadWindow, error.BadDrawable):
            return None
        return None if value is None or value.format != 32 else list(value.value)

    def supports(self, name: str) -> bool:
        return self.atom(name) in (self.cardinals(self.root, "_NET_SUPPORTED") or [])

    def is_redirected(self) -> bool:
        """Whether a client receives the requests of top-level windows, as a window manager does."""
        return bool(self.root.get_attributes().all_event_masks & X.SubstructureRedirectMask)

    def composited(self) -> bool:
        """Whether a compositing manager has announced itself."""
        return self.connection.get_selection_owner(self.atom("_NET_WM_CM_S0")) != X.NONE

    def selection_property(self, selection: str, name: str) -> bytes:
        """A property of the window that owns the selection; empty without an owner or the property."""
        owner = self.connection.get_selection_owner(self.atom(selection))
        found = owner.get_full_property(self.atom(name), X.AnyPropertyType) if owner != X.NONE else None
        return bytes(found.value) if found else b""

    def window(self, identifier: int):
        return self.connection.create_resource_object("window", identifier)

    def managed(self) -> list[int]:
        return self.cardinals(self.root, "_NET_CLIENT_LIST") or []

    def active(self) -> int:
        return (self.cardinals(self.root, "_NET_ACTIVE_WINDOW") or [0])[0]

    def of_process(self, process_id: int) -> int | None:
        """The window of that process that the window manager manages and that people can see, or None."""
        return next((one for one in self.all_of_process(process_id) if self.is_large_enough(one)), None)

    def is_large_enough(self, identifier: int) -> bool:
        """Whether it is more than the window of one pixel that some toolkits keep for messages."""
        try:
            geometry = self.window(identifier).get_geometry()
        except (error.BadWindow, error.BadDrawable):
            return False
        return (geometry.width, geometry.height) != (1, 1)

    def all_of_process(self, process_id: int) -> list[int]:
        """The managed windows of that process, oldest first."""
        return [identifier for identifier in self.managed() if self.process_of(identifier) == process_id]

    def process_of(self, identifier: int) -> int | None:
        """The process of a window: what the client claims, else what the server knows."""
        claimed = self.cardinals(self.window(identifier), "_NET_WM_PID")
        if claimed:
            return claimed[0]
        try:
            # The id of a closed window may belong to another client by now.
            self.window(identifier).get_geometry()
        except (error.BadWindow, error.BadDrawable):
            return None
        specification = {"client": identifier, "mask": res.LocalClientPIDMask}
        answer = self.connection.res_query_client_ids([specification])
        return next((number for entry in answer.ids for number in entry.value), None)

    def is_decorated(self, identifier: int) -> bool:
        """Whether a running window manager has put a frame around it."""
        return self.window(identifier).query_tree().parent != self.root

    def states(self, identifier: int) -> set[str]:
        atoms = self.cardinals(self.window(identifier), "_NET_WM_STATE") or []
        return {self.connection.get_atom_name(atom).removeprefix("_NET_WM_STATE_") for atom in atoms}

    # Geometry

    def client_rect(self, identifier: int) -> Rect:
        """The client area, without decoration."""
        window = self.window(identifier)
        geometry = window.get_geometry()
        place = self.root.translate_coords(window, 0, 0)
        return Rect(place.x, place.y, geometry.width, geometry.height)

    def extents(self, identifier: int, name: str) -> tuple[int, int, int, int]:
        """Left, right, top, bottom; zeros if they are not set."""
        values = self.cardinals(self.window(identifier), name)
        return tuple(values) if values and len(values) == 4 else (0, 0, 0, 0)

    def frame(self, identifier: int) -> Rect:
        shadow = self.extents(identifier, "_GTK_FRAME_EXTENTS")
        decoration = self.extents(identifier, "_NET_FRAME_EXTENTS")
        return self.client_rect(identifier).grown(*decoration).grown(*(-side for side in shadow))

    def work_area(self) -> Rect | None:
        """The area that bars and panels leave of a single screen, by the window manager's property; None without it."""
        values = self.cardinals(self.root, "_NET_WORKAREA")
        return Rect(*values[:4]) if values else None

    def size_hints(self, identifier: int):
        return self.window(identifier).get_wm_normal_hints()

    def paint_background(self, colour: int) -> None:
        """Paints the empty screen in one colour, 0xRRGGBB."""
        self.root.change_attributes(background_pixel=colour)
        self.root.clear_area(0, 0, 0, 0)
        self.connection.sync()

    def pixel(self, x: int, y: int) -> tuple[int, int, int]:
        """The screen's pixel there: red, green, blue."""
        data = self.root.get_image(x, y, 1, 1, X.ZPixmap, 0xFFFFFFFF).data
        return (data[2], data[1], data[0])

    # Requests, as a pager sends them

    def _ask(self, identifier: int, message: str, data: list[int]) -> None:
        request = event.ClientMessage(
            window=self.window(identifier), client_type=self.atom(message), data=(32, (data + [0] * 5)[:5])
        )
        self.root.send_event(request, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.connection.flush()

    def show_workspace(self, number: int) -> None:
        """Requests that workspace, as a pager does; does not wait."""
        self._ask(self.root.id, "_NET_CURRENT_DESKTOP", [number, X.CurrentTime])

    def activate(self, identifier: int, seconds: float = PATIENCE) -> None:
        """Brings a window to the front and waits until window manager and server both report that it has the focus.

        Repeats the request every second: a window manager that has just started may give the focus to another window
        afterwards.
        """
        asked = -math.inf

        def is_active() -> bool:
            nonlocal asked
            if time.monotonic() >= asked + 1.0:
                asked = time.monotonic()
                self._ask(identifier, "_NET_ACTIVE_WINDOW", [FROM_A_PAGER, X.CurrentTime, 0])
                self.fence()
            return self.active() == identifier and self.has_input_focus(identifier)

        until(is_active, f"window {identifier:#x} to be active", seconds, self._focus_story)

    def has_input_focus(self, identifier: int) -> bool:
        """Whether the keyboard focus is in the window, or in the window manager's frame around it."""
        focused = self.connection.get_input_focus().focus
        while not isinstance(focused, int) and focused != self.root:
            if focused.id == identifier:
                return True
            try:
                tree = focused.query_tree()
            except error.BadWindow:
                return False
            if any(child.id == identifier for child in tree.children):
                return True
            focused = tree.parent
        return False

    def _focus_story(self) -> str:
        focused = self.connection.get_input_focus().focus
        return f"active {self.active():#x} of {[hex(window) for window in self.managed()]}, focus on {focused}"

    def send_message(self, identifier: int, message: str, atom: str) -> None:
        """Sends a window's client a message that holds one name."""
        data = (32, [self.atom(atom), X.CurrentTime, 0, 0, 0])
        window = self.window(identifier)
        window.send_event(event.ClientMessage(window=window, client_type=self.atom(message), data=data))
        self.connection.flush()

    def place(self, identifier: int, frame: Rect) -> None:
        """Requests that frame and waits until the window manager has handled the request, with any result."""
        decoration = self.extents(identifier, "_NET_FRAME_EXTENTS")
        shadow = self.extents(identifier, "_GTK_FRAME_EXTENTS")
        left, right, top, bottom = (outer - inner for outer, inner in zip(decoration, shadow))
        flags = NORTH_WEST | 0xF << 8 | FROM_A_PAGER << 12
        size = [frame.width - left - right, frame.height - top - bottom]
        corner = [frame.x - shadow[0], frame.y - shadow[2]]
        self._ask(identifier, "_NET_MOVERESIZE_WINDOW", [flags, *(value & 0xFFFFFFFF for value in corner + size)])
        self.fence()

    def change_state(self, identifier: int, action: int, *names: str) -> None:
        """Adds or removes one or two states, such as MAXIMIZED_VERT, and waits until the window shows them."""
        atoms = [self.atom(f"_NET_WM_STATE_{name}") for name in names]
        self._ask(identifier, "_NET_WM_STATE", [action, *(atoms + [0])[:2], FROM_A_PAGER])
        wanted = set(names)

        def reached() -> bool:
            shown = self.states(identifier) & wanted
            return shown == wanted if action == ADD else not shown

        what = f"states {wanted} to be {'set' if action == ADD else 'gone'}"
        until(reached, what, PATIENCE, lambda: self.states(identifier))
        self.fence()

    def minimize(self, identifier: int) -> None:
        """Minimizes a window and waits until it is hidden and has lost the focus."""
        self._ask(identifier, "WM_CHANGE_STATE", [Xutil.IconicState])
        window = self.window(identifier)
        until(lambda: (self.cardinals(window, "WM_STATE") or [0])[0] == Xutil.IconicState, "the window to be minimized")
        until(lambda: self.active() != identifier, "the minimized window to lose the focus", saw=self._focus_story)
        self.fence()

    def focus(self, identifier: int) -> None:
        """Gives a window the keyboard focus as a program could, and requests that the window manager activates it."""
        self._ask(identifier, "_NET_ACTIVE_WINDOW", [FROM_A_PAGER, X.CurrentTime, 0])
        self.fence()
        self.window(identifier).set_input_focus(X.RevertToPointerRoot, X.CurrentTime)
        self.connection.sync()
        focused = lambda: getattr(self.connection.get_input_focus().focus, "id", 0)
        what = f"{identifier:#x} to have the keyboard focus"
        until(lambda: focused() == identifier, what, saw=lambda: hex(focused()))

    def fence(self, seconds: float = PATIENCE) -> None:
        """Returns when the window manager has handled every earlier request.

        A configure request for an unmapped window of ours goes to the window manager, which replies in order.
        """
        if not self.answers(seconds):
            raise Expired(f"the window manager did not answer within {seconds:g} s")

    def answers(self, seconds: float) -> bool:
        """Whether the window manager handles a new request within that time."""
        deadline = time.monotonic() + seconds
        asked: set[int] = set()
        ask_again = 0.0
        while True:
            now = time.monotonic()
            if now >= ask_again:
                # When a window manager is replaced, its pending requests are lost.
                ask_again = now + FENCE_INTERVAL
                # A different width each time, because a request for the present width gets no reply.
                self._fence_width = self._fence_width % WIDEST_FENCE + 1
                asked.add(self._fence_width)
                self._fence.configure(width=self._fence_width)
                self.connection.flush()
            while self.connection.pending_events():
                seen = self.connection.next_event()
                if seen.type == X.ConfigureNotify and seen.window == self._fence and seen.width in asked:
                    return True
            if now >= deadline:
                return False
            select.select([self.connection], [], [], min(deadline, ask_again) - now)
