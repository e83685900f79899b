#include "CorvidKit/MenuBarController.h"

#include "CorvidKit/Concurrency.h"
#include "Platform/Seam/Desktop/ThisApplication.h"
#include "Platform/Seam/Platform.h"

#include <utility>

namespace corvid {

namespace {

void assertOnMainThread(unsigned line) {
    assertIsolated({.file = "CorvidKit/MenuBarController", .line = line});
}

platform::Image asTemplate(const platform::Image& image) {
    platform::ImageDescription description = image.description();
    description.isTemplate = true;
    return platform::Image(std::move(description));
}

} // namespace

std::shared_ptr<MenuBarController>& MenuBarController::sharedController() {
    static std::shared_ptr<MenuBarController> instance;
    return instance;
}

std::shared_ptr<MenuBarController> MenuBarController::make(std::string title,
                                                           std::shared_ptr<const platform::View> content,
                                                           platform::Popover& popover, Publisher<>& changes,
                                                           Symbol symbol) {
    assertOnMainThread(__LINE__);
    const auto controller =
        std::make_shared<MenuBarController>(Made(), std::move(title), std::move(content), popover, std::move(symbol));
    controller->updateIcon();
    controller->follow(changes);
    sharedController() = controller;
    return controller;
}

MenuBarController::MenuBarController(Made /*made*/, std::string title, std::shared_ptr<const platform::View> content,
                                     platform::Popover& popover, Symbol symbol)
    // The panel keeps the item's place under this name.
    : item(platform::current().statusBar.createStatusItem("Item-0"))
    , popover(popover)
    , title(std::move(title))
    , symbol(std::move(symbol)) {
    popover.setContentView(std::move(content));
    popover.setBehavior(platform::Popover::Behavior::transient);
    popover.setAnimates(true);
    // The item goes with the controller, and its action with it.
    item->setAction([this](std::optional<CGPoint> position) {
        const std::shared_ptr<MenuBarController> held = shared_from_this();
        held->toggle(position);
    });
    item->setTitle(this->title);
}

void MenuBarController::follow(Publisher<>& changes) {
    changesSubscription = changes.subscribe([weak = weak_from_this()] {
        // Notified before the change: the symbol is the new state's in a later turn only.
        platform::current().mainActor.post([weak] {
            if (const auto controller = weak.lock()) {
                controller->updateIcon();
            }
        });
    });
}

void MenuBarController::open() {
    assertOnMainThread(__LINE__);
    open({.rect = item->frame()});
}

void MenuBarController::open(const platform::Popover::Anchor& anchor) {
    if (popover.isShown()) {
        return;
    }
    platform::current().thisApplication.activateIgnoringOtherApps();
    popover.show(anchor, platform::Popover::Edge::minY);
    if (popover.hasContentView()) {
        popover.makeKey();
    }
}

void MenuBarController::close() {
    assertOnMainThread(__LINE__);
    if (popover.isShown()) {
        popover.performClose();
    }
}

void MenuBarController::toggle(std::optional<CGPoint> position) {
    assertOnMainThread(__LINE__);
    if (popover.isShown()) {
        popover.performClose();
        return;
    }
    const std::optional<CGRect> place = position ? std::optional(CGRect{*position, {}}) : item->frame();
    open({.rect = place, .isAtPointer = !place});
}

void MenuBarController::showUpdateBadge(UpdateCenter& updates) {
    assertOnMainThread(__LINE__);
    badgeSubscription = updates.updateReminderDueFlag().subscribe(
        [weak = weak_from_this(), last = std::optional<bool>()](const bool& isDue) mutable {
            if (std::exchange(last, isDue) == isDue) {
                return;
            }
            platform::current().mainActor.post([weak, isDue] {
                if (const auto controller = weak.lock()) {
                    controller->showsBadge = isDue;
                    controller->updateIcon();
                }
            });
        });
}

void MenuBarController::updateIcon() {
    const std::optional<platform::Image> image = platform::current().statusBar.symbolImage(symbol(), title);
    if (!image) {
        return;
    }
    const platform::Image icon = asTemplate(*image);
    item->setImage(showsBadge ? badged(icon) : icon);
}

platform::Image MenuBarController::badged(const platform::Image& image) {
    platform::ImageDescription description = image.description();
    description.isBadged = true;
    return platform::Image(std::move(description));
}

} // namespace corvid
