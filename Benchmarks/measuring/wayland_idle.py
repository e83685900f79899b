"""Tessel on one of the Wayland desktops, with ten rules, used first and then left alone."""

from harness.applications import APPLICATIONS
from harness.waiting import until, until_equal

from .idle import RULED, Cost, until_at_rest, watch
from .wayland import COMPOSITORS, NATURAL, Probe

# The keys of the six actions, as kernel key codes (linux/input-event-codes.h).
ACTION_KEYS = {"left half": 105, "right half": 106, "center": 46, "maximize": 103, "almost maximize": 32, "height": 108}


def use_a_rule(measured) -> None:
    application = APPLICATIONS["featherpad"]
    session = measured.desktop.session
    process = session.start([*application.command], application.name, {"QT_QPA_PLATFORM": "wayland"})
    window = measured.window_of(process)
    until_equal(lambda: measured.frame(window), measured.work_area, "the ruled window's frame")
    session.processes.end(process)


def use_the_keys(measured, product) -> None:
    probe = Probe(measured)
    window = measured.window_of(probe.process)
    for action, key in ACTION_KEYS.items():
        measured.reset(window)
        probe.press(key)
        until(lambda: measured.frame(window) != NATURAL, f"{action} to have an effect")
        product.until_at_rest()


def measure(name: str, seconds: float) -> Cost:
    measured = COMPOSITORS[name]()
    with measured.desktop as desktop:
        desktop.session.rules({identifier: "maximize" for identifier in RULED})
        product = desktop.launch()
        product.until_status("Active", 20.0)
        use_a_rule(measured)
        use_the_keys(measured, product)
        until_at_rest(product.process.pid)
        return watch({name: product.process.pid}, seconds)[name]
