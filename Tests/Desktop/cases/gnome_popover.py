"""The item in GNOME Shell's top bar, and the window below it."""

from harness.gnome import MONITORS, Gnome
from harness.rect import Rect
from harness.waiting import until, until_equal

from . import case

# In points: the width of the window's shadow on each side, and the distance of the plate from the bar.
SHADOW = 20
GAP = 6


def open_popover(desktop: Gnome, product) -> tuple[int, Rect]:
    """Clicks on the item. Returns the window, and the visible plate in it."""
    item = desktop.item_at_rest()
    desktop.hands.click(item.x + item.width // 2, item.y + item.height // 2)
    (window,) = until(lambda: desktop.windows_of(product.process.pid), "the popover to open")
    until_equal(desktop.focused, window, "the window with the keyboard")
    return window, desktop.at_rest(window).grown(-SHADOW, -SHADOW, -SHADOW, -SHADOW)


def until_closed(desktop: Gnome, product, when: str) -> None:
    until(lambda: not desktop.windows_of(product.process.pid), f"the popover to close {when}")


@case("desktop.gnome.popover")
def a_click_on_the_item_opens_the_popover_below_it(program):
    with Gnome(program, "gnome.popover") as desktop:
        _, other = desktop.open(["mousepad", "--disable-server"], "mousepad")
        product = desktop.launch()
        product.until_status("Active")
        until(desktop.has_item, "the item in the top bar")
        window, plate = open_popover(desktop, product)
        item = desktop.item_at_rest()
        bar = item.y + item.height
        assert bar <= plate.y <= bar + GAP, f"{plate} does not hang at {item}"
        assert MONITORS[0].x <= plate.x and plate.x + plate.width <= MONITORS[0].width, f"{plate} is cut off"
        middle = item.x + item.width / 2
        assert plate.x <= middle <= plate.x + plate.width, f"{plate} is not below {item}"
        assert desktop.see(f"one({window}).is_above() && one({window}).is_on_all_workspaces()")
        desktop.hands.chord("Escape")
        until_closed(desktop, product, "on Escape")
        until_equal(desktop.focused, other, "the window that has the keyboard again")

        again = open_popover(desktop, product)[1]
        assert again == plate, f"it hangs at {again} the second time, and at {plate} the first"
        item = desktop.item_at_rest()
        desktop.hands.click(item.x + item.width // 2, item.y + item.height // 2)
        until_closed(desktop, product, "on a second click")
        product.until_at_rest()
        assert not desktop.windows_of(product.process.pid), "it was opened again"

        open_popover(desktop, product)
        desktop.activate(other)
        until_closed(desktop, product, "as another window takes the keyboard")


@case("desktop.gnome.menu")
def a_secondary_click_opens_the_menu(program):
    with Gnome(program, "gnome.menu") as desktop:
        product = desktop.launch()
        product.until_status("Active")
        until(desktop.has_item, "the item in the top bar")
        assert desktop.see("Main.panel.statusArea.tessel.accessible_name") == "Tessel"
        item = desktop.item_at_rest()
        desktop.hands.click(item.x + item.width // 2, item.y + item.height // 2, 0x111)
        until(lambda: desktop.see("Main.panel.statusArea.tessel.has_style_pseudo_class('active')"), "the menu to open")
        labels = desktop.see(
            "Main.layoutManager.uiGroup.get_children().filter(c => c._delegate?.sourceActor === "
            "Main.panel.statusArea.tessel).flatMap(c => c._delegate._getMenuItems().map(i => i.label?.text ?? ''))"
        )
        assert any("Quit" in label for label in labels), labels
        last = desktop.see(
            "(i => [i.get_transformed_position(), i.get_transformed_size()].flat())"
            "(Main.layoutManager.uiGroup.get_children().filter(c => c._delegate?.sourceActor === "
            "Main.panel.statusArea.tessel).flatMap(c => c._delegate._getMenuItems()).find(i => /Quit/.test(i.label?.text)))"
        )
        x, y, width, height = last
        desktop.hands.click(round(x + width / 2), round(y + height / 2))
        assert product.ended() == 0
        until(lambda: not desktop.has_item(), "the item to be gone")
