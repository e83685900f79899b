#include "CorvidKit/DeferredPopover.h"

#include <utility>

namespace corvid {

platform::Popover* DeferredPopover::real() const {
    platform::Toolkit* started = toolkit.started();
    return started == nullptr || !isConfigured ? nullptr : &started->popover();
}

void DeferredPopover::setContentView(std::shared_ptr<const platform::View> newView) {
    view = std::move(newView);
    if (platform::Popover* popover = real()) {
        popover->setContentView(view);
    }
}

void DeferredPopover::setBehavior(Behavior newBehavior) {
    behavior = newBehavior;
    if (platform::Popover* popover = real()) {
        popover->setBehavior(behavior);
    }
}

void DeferredPopover::setAnimates(bool newAnimates) {
    animates = newAnimates;
    if (platform::Popover* popover = real()) {
        popover->setAnimates(animates);
    }
}

bool DeferredPopover::isShown() const {
    const platform::Popover* popover = real();
    return popover == nullptr ? requested.has_value() : popover->isShown();
}

void DeferredPopover::show(const Anchor& anchor, Edge preferredEdge) {
    if (platform::Popover* popover = real()) {
        popover->show(anchor, preferredEdge);
        return;
    }
    requested = Request{.anchor = anchor, .preferredEdge = preferredEdge};
    toolkit.use([this](platform::Toolkit& started) { appear(started.popover()); }, [this] { requested.reset(); });
}

void DeferredPopover::appear(platform::Popover& popover) {
    if (!isConfigured) {
        isConfigured = true;
        popover.setContentView(view);
        popover.setBehavior(behavior);
        popover.setAnimates(animates);
    }
    // Closed again meanwhile: the user clicked twice.
    if (const auto request = std::exchange(requested, std::nullopt)) {
        popover.show(request->anchor, request->preferredEdge);
        if (request->isKey) {
            popover.makeKey();
        }
    }
}

void DeferredPopover::makeKey() {
    if (platform::Popover* popover = real()) {
        popover->makeKey();
    } else if (requested) {
        requested->isKey = true;
    }
}

void DeferredPopover::performClose() {
    if (platform::Popover* popover = real()) {
        popover->performClose();
    }
    requested.reset();
}

} // namespace corvid
