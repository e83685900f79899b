"""The use of Tessel on X11 before its idle cost is measured: one rule and all actions."""

from .idle import RULED

from harness.applications import APPLICATIONS
from harness.desktop import Desktop
from harness.keyboard import SHORTCUTS
from harness.product import Product
from harness.waiting import until


def start_and_use_tessel(desktop: Desktop, window: int) -> Product:
    """Starts it with ten rules. Every action moves this window."""
    desktop.windows.activate(window)
    desktop.session.rules({identifier: "maximize" for identifier in RULED})
    product = desktop.launch()
    product.until_status("Active")
    _use_a_rule(desktop)
    desktop.windows.activate(window)
    for action in SHORTCUTS:
        before = desktop.windows.frame(window)
        desktop.press(product, action)
        assert desktop.windows.frame(window) != before, f"{action} had no effect"
    return product


def _use_a_rule(desktop: Desktop) -> None:
    ruled = desktop.start(APPLICATIONS["featherpad"])
    window = desktop.wait_for(ruled)
    until(lambda: desktop.windows.frame(window).size == (1920, 1080), "Tessel's rule to take effect")
    desktop.end(ruled)
    until(lambda: window not in desktop.windows.managed(), "the ruled application to be gone")
