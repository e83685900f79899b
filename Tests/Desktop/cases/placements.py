"""Places without a shortcut, requested by name on each kind of desktop: parts of the screen, the other screen, back."""

import sys
from typing import Callable, NamedTuple

from harness import servers
from harness.applications import APPLICATIONS, WAYLAND_PANEL, Application
from harness.desktop import Desktop
from harness.gnome import Gnome
from harness.i3 import I3Desktop
from harness.kwin import SCREENS, KWinDesktop
from harness.monitors import Monitors, Plug
from harness.placements import PARTS, elsewhere, placed
from harness.product import run_to_end
from harness.rect import Rect
from harness.settling import settles_on
from harness.skipping import require_module
from harness.sway import SwayDesktop
from harness.waiting import until_equal
from harness.wayfire import WayfireDesktop
from harness.windows import ADD
from Xlib import Xutil

from . import case, case_for_each
from .shells import open_application

FIRST = Plug("DUMMY0", Rect(0, 0, 1920, 1080), primary=True)
SECOND = Plug("DUMMY1", Rect(1920, 0, 1280, 1024))
# In the space of a screen: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(211, 173, 662, 503)
THICKNESS = 41
MAXIMIZED = ("MAXIMIZED_VERT", "MAXIMIZED_HORZ")


class Scene(NamedTuple):
    """A focused window on a desktop with two screens side by side, as the desktop itself reports them."""

    desktop: object
    product: object
    areas: list[Rect]
    frame: Callable[[], Rect]
    place: Callable[[Rect], object]
    # Maps a requested frame size to the one that it takes now.
    settles: Callable[[], Callable]

    def perform(self, name: str, status: int = 0) -> None:
        session, program = self.desktop.session, self.desktop.program
        ended, output, errors, _ = run_to_end(
            session, program, "--perform", name, prefix=session.prefix
        )
        assert (ended, output) == (status, ""), f"{name}: status {ended}, {output!r}, {errors!r}"
        assert errors.count("\n") == (status != 0), errors
        self.product.until_at_rest()

    def holds(self, wanted: Rect, what: str) -> None:
        until_equal(self.frame, wanted, what, 5.0)

    def start_at(self, rect: Rect) -> Rect:
        """Moves the window there as a person might. Returns its frame."""
        self.place(rect)
        self.product.until_at_rest()
        return self.frame()


def every_part(scene: Scene) -> list[str]:
    """Each part on either screen, twice, and back. Returns the results that differ from the rules."""
    failures = []
    for area in scene.areas:
        for name in PARTS:
            before = scene.start_at(NATURAL._replace(x=area.x + NATURAL.x, y=area.y + NATURAL.y))
            wanted = placed(name, before, area, scene.settles())
            try:
                scene.perform(name)
                scene.holds(wanted, f"{name} in {area}, from {before}")
                scene.perform(name)
                scene.holds(wanted, f"{name} once more in {area}")
                scene.perform("restore")
                scene.holds(before, f"what was before {name} in {area}")
                scene.perform("restore", 1)
            except AssertionError as failure:
                failures.append(str(failure))
    return failures


def the_other_screen(scene: Scene) -> list[str]:
    """From places on the first screen to the second one and on, and back step by step."""
    failures = []
    here, there = scene.areas
    right = here.x + here.width - NATURAL.width
    bottom = here.y + here.height - NATURAL.height
    for start in (NATURAL._replace(x=here.x + 211, y=here.y + 73), NATURAL._replace(x=here.x, y=here.y),
                  NATURAL._replace(x=right, y=bottom), NATURAL._replace(x=right, y=here.y)):
        places = [scene.start_at(start)]
        try:
            # After the last screen comes the first.
            for name, former, area in (("next-display", here, there), ("previous-display", there, here),
                                       ("next-display", here, there), ("next-display", there, here)):
                places.append(elsewhere(places[-1], former, area, scene.settles()))
                scene.perform(name)
                scene.holds(places[-1], f"{name} from {places[-2]}")
            for place in reversed(places[:-1]):
                scene.perform("restore")
                scene.holds(place, "the place before")
            scene.perform("restore", 1)
        except AssertionError as failure:
            failures.append(str(failure))
    return failures


def what_was_moved_meanwhile(scene: Scene) -> list[str]:
    """`restore` does not move a window that its user has moved after its placement."""
    area = scene.areas[0]
    scene.start_at(NATURAL._replace(x=area.x + 211, y=area.y + 73))
    scene.perform("left-half")
    moved = scene.start_at(NATURAL._replace(x=area.x + 311, y=area.y + 173))
    scene.perform("restore", 1)
    scene.holds(moved, "the window that was moved by hand")
    return []


def all_comes_out(scene: Scene) -> None:
    scene.product.until_status("Active")
    failures = every_part(scene) + the_other_screen(scene) + what_was_moved_meanwhile(scene)
    assert not failures, "\n".join(failures)


def any_size(size):
    return size


def at_least_its_smallest(desktop: Desktop, window: int, application: Application):
    """The size that an X11 window takes: at least its smallest size, and whole rows and columns if it counts in
    those."""
    hints, frame, client = (
        desktop.windows.size_hints(window), desktop.windows.frame(window), desktop.windows.client_rect(window)
    )
    smallest = (hints.min_width + frame.width - client.width, hints.min_height + frame.height - client.height)
    settles = settles_on(desktop.windows, window, application, desktop.manager)
    return lambda asked: tuple(map(max, settles(asked), smallest if hints.flags & Xutil.PMinSize else (0, 0)))


@case_for_each("desktop.placements.openbox", ("mousepad", "xterm", "fixed"))
def every_place_on_openbox(program, kind):
    with Desktop(program, servers.two_monitors, f"placements.openbox.{kind}") as desktop:
        desktop.start_window_manager("openbox")
        monitors = Monitors(desktop)
        monitors.arrange(FIRST, SECOND)
        areas = [monitors.put_panel(plug.frame, THICKNESS) for plug in (FIRST, SECOND)]
        window = desktop.open(APPLICATIONS[kind]).window
        all_comes_out(Scene(
            desktop, desktop.launch(), areas, lambda: desktop.windows.frame(window),
            lambda rect: desktop.windows.place(window, rect),
            lambda: at_least_its_smallest(desktop, window, APPLICATIONS[kind]),
        ))


@case("desktop.placements.one-screen")
def one_screen_has_no_other(program):
    with Desktop(program, name="placements.one-screen") as desktop:
        desktop.start_window_manager("openbox")
        window = desktop.open(APPLICATIONS["mousepad"]).window
        scene = Scene(
            desktop, desktop.launch(), [desktop.visible_frame()], lambda: desktop.windows.frame(window),
            lambda rect: desktop.windows.place(window, rect), lambda: any_size,
        )
        scene.product.until_status("Active")
        # A placement would release it if its user had maximized it.
        desktop.windows.change_state(window, ADD, *MAXIMIZED)
        for name in ("next-display", "previous-display"):
            scene.perform(name)
            desktop.windows.fence()
            assert set(MAXIMIZED) <= desktop.windows.states(window), f"{name} touched the window"


@case("desktop.placements.kwin")
def every_place_on_kwin(program):
    with KWinDesktop(program, has_keyboard=False) as desktop:
        require_module("GtkLayerShell", "0.1", "gir1.2-gtklayershell-0.1")
        panel = desktop.start(sys.executable, WAYLAND_PANEL, str(THICKNESS))
        until_equal(
            lambda: [each.frame for each in desktop.eyes.windows() if each.process == panel.pid],
            [SCREENS[0]._replace(height=THICKNESS)], "the panel",
        )
        client = desktop.open(*APPLICATIONS["mousepad"].command, package="mousepad")
        areas = [Rect(0, THICKNESS, SCREENS[0].width, SCREENS[0].height - THICKNESS), SCREENS[1]]
        all_comes_out(Scene(
            desktop, desktop.launch(), areas, lambda: desktop.eyes.frame(client.window),
            lambda rect: desktop.eyes.place(client.window, rect), lambda: any_size,
        ))


@case("desktop.placements.gnome")
def every_place_on_gnome(program):
    with Gnome(program, "placements.gnome") as desktop:
        _, window = open_application(desktop, "mousepad")
        smallest = desktop.place(window, NATURAL._replace(width=10, height=10)).size
        all_comes_out(Scene(
            desktop, desktop.launch(), desktop.work_areas(), lambda: desktop.frame(window),
            lambda rect: desktop.place(window, rect), lambda: lambda asked: tuple(map(max, asked, smallest)),
        ))


@case("desktop.placements.sway")
def every_place_on_sway(program):
    with SwayDesktop(program, name="placements.sway") as desktop:
        number = desktop.open(APPLICATIONS["mousepad"]).number
        all_comes_out(Scene(
            desktop, desktop.launch(), [desktop.work_area(output) for output in (0, 1)], lambda: desktop.frame(number),
            lambda rect: desktop.place(number, rect), lambda: any_size,
        ))


@case("desktop.placements.wayfire")
def every_place_on_wayfire(program):
    with WayfireDesktop(program, name="placements.wayfire") as desktop:
        number = desktop.open(APPLICATIONS["mousepad"]).number
        smallest = desktop.place(number, NATURAL._replace(width=10, height=10)).size
        all_comes_out(Scene(
            desktop, desktop.launch(), [desktop.work_area(output) for output in (0, 1)], lambda: desktop.frame(number),
            lambda rect: desktop.place(number, rect), lambda: lambda asked: tuple(map(max, asked, smallest)),
        ))


@case("desktop.placements.i3")
def every_place_on_i3(program):
    with I3Desktop(program, name="placements.i3", server=servers.two_monitors) as desktop:
        Monitors(desktop).arrange(FIRST, SECOND)
        desktop.connect()
        window = desktop.open(APPLICATIONS["mousepad"]).window
        all_comes_out(Scene(
            desktop, desktop.launch(), [desktop.work_area(output) for output in (0, 1)],
            lambda: desktop.windows.frame(window), lambda rect: desktop.place(window, rect),
            lambda: at_least_its_smallest(desktop, window, APPLICATIONS["mousepad"]),
        ))
