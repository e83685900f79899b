"""App rules under GNOME Shell: the first window of a ruled application is placed as it is launched, and no other."""

from harness.gnome import Gnome
from harness.oracle import centred
from harness.waiting import until

from . import case
from .gnome_actions import APPLICATIONS, open_application

RULES = {"org.xfce.mousepad": "maximize", "featherpad": "center", "debian-xterm": "maximize"}


@case("desktop.gnome.rules")
def the_first_window_of_every_kind_of_application_is_placed(program):
    with Gnome(program, "gnome.rules") as desktop:
        desktop.session.rules(RULES)
        product = desktop.launch()
        product.until_status("Active")
        area = desktop.work_areas()[0]
        for name, rule in zip(APPLICATIONS, RULES.values()):
            process, window = open_application(desktop, name)
            sizes = desktop.sizes_of_steps(window) if name == "xterm" else lambda asked: asked

            def wanted():
                size = sizes(area.size) if rule == "maximize" else desktop.frame(window).size
                return centred(size, area)

            until(lambda: desktop.frame(window) == wanted(), f"{name} to stand as by {rule}", 5.0,
                  lambda: f"{desktop.frame(window)}, wanted {wanted()}")
            desktop.session.processes.end(process)


@case("desktop.gnome.rules-present")
def what_is_open_already_stays_where_it_is(program):
    with Gnome(program, "gnome.rules-present") as desktop:
        _, window = open_application(desktop, "mousepad")
        before = desktop.at_rest(window)
        desktop.session.rules(RULES)
        product = desktop.launch()
        product.until_status("Active")
        desktop.switch_extension(False)
        product.until_status("Waiting for permission", 20.0)
        desktop.switch_extension(True)
        product.until_status("Active", 20.0)
        product.until_at_rest()
        assert desktop.at_rest(window) == before, "a window that was there was placed"
