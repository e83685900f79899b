"""KWin on Wayland with screens of different scales."""

import json

from harness.applications import APPLICATIONS
from harness.kwin import HEIGHT, SCREENS, WIDTH, KWinDesktop
from harness.oracle import ACTIONS, expected
from harness.rect import Rect
from harness.skipping import require
from harness.waiting import until, until_equal

from . import case_for_each

KINDS = {
    "mousepad": ("mousepad", {}),
    "featherpad": ("featherpad", {}),
    # With its own decoration, through Xwayland, at whole pixels of the screen, which are not whole points.
    "mousepad-csd": ("mousepad-csd", {"GTK_CSD": "1", "GDK_BACKEND": "x11"}),
}
# Each in the space of a screen: away from every edge, no round number, odd and even mixed.
NATURAL = Rect(111, 53, 562, 403)


@case_for_each("desktop.kwin.scales", KINDS)
def every_action_is_exact_whatever_the_scale(program, kind):
    require("kscreen-doctor", "libkscreen-bin; on Debian 12 libkf5screen-bin")
    name, environment = KINDS[kind]
    with KWinDesktop(program) as desktop:
        product = desktop.launch()
        # KWin 6 puts windows on whole pixels of their screen.
        pixel = 1 if desktop.eyes.look()["is_six"] else 0
        application = APPLICATIONS[name]
        client = desktop.open(*application.command, package=application.package, environment=environment)
        for scales in ((1.5, 1.0), (1.0, 1.25)):
            screens = [scaled(screen, scale) for screen, scale in zip(SCREENS, scales)]
            # While the program runs, as a user does who changes the settings.
            outputs = (each["name"] for each in outputs_by_place(desktop))
            desktop.session.run(["kscreen-doctor", *(f"output.{name}.scale.{scale}" for name, scale in zip(outputs, scales))])
            until_equal(lambda: frames_of_screens(desktop), screens, "the screens")
            # At a scale of one and a half a screen is no whole number of points wide.
            leeway = 1 if kind == "mousepad-csd" or 1.5 in scales else pixel
            for screen in screens:
                natural = NATURAL._replace(x=NATURAL.x + screen.x, height=min(NATURAL.height, screen.height - 100))
                for action in ACTIONS:
                    desktop.eyes.place(client.window, natural, leeway=pixel)
                    wanted = expected(action, natural, screen, lambda size: size)
                    desktop.press(product, action)
                    until(
                        lambda: desktop.eyes.frame(client.window).is_near(wanted, leeway),
                        f"{wanted} after {action} at scales {scales}", saw=lambda: desktop.eyes.find(client.window),
                    )


def scaled(screen: Rect, scale: float) -> Rect:
    return screen._replace(width=round(screen.width / scale), height=round(screen.height / scale))


def outputs_by_place(desktop: KWinDesktop) -> list[dict]:
    """From left to right, as KWin reports them to configuration clients. KWin 6.7 numbers them from the right."""
    reported = json.loads(desktop.session.run(["kscreen-doctor", "--json"]))
    return sorted(reported["outputs"], key=lambda each: each["pos"]["x"])


def frames_of_screens(desktop: KWinDesktop) -> list[Rect]:
    return [
        scaled(Rect(each["pos"]["x"], each["pos"]["y"], WIDTH, HEIGHT), each["scale"])
        for each in outputs_by_place(desktop)
    ]
