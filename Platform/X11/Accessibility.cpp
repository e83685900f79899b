#include "Platform/X11/Accessibility.h"

#include "Platform/X11/Element.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::x11 {

namespace {

AXUIElement windowElement(xcb_window_t window) {
    return AXUIElement(std::make_shared<const WindowElement>(window));
}

std::string subroleName(WindowKind kind) {
    switch (kind) {
    case WindowKind::standard:
        return std::string(AXSubrole::standardWindow);
    case WindowKind::auxiliary:
        return "AXDialog";
    case WindowKind::furniture:
        break;
    }
    return "AXUnknown";
}

} // namespace

Accessibility::Accessibility(Connection& connection, Turn& turn, Placement& placement,
                             const ManagedWindows& managedWindows, std::function<bool()> askForTrust)
    : connection(connection)
    , turn(turn)
    , placement(placement)
    , managedWindows(managedWindows)
    , askForTrust(std::move(askForTrust)) {
}

AXUIElement Accessibility::applicationElement(ProcessIdentifier process) {
    return AXUIElement(std::make_shared<const ApplicationElement>(process));
}

std::expected<AXValue, AXError> Accessibility::copyAttributeValue(const AXUIElement& element,
                                                                  std::string_view attribute) {
    if (const auto* application = dynamic_cast<const ApplicationElement*>(&element.contents())) {
        return applicationAttribute(application->process, attribute);
    }
    if (const auto* window = dynamic_cast<const WindowElement*>(&element.contents())) {
        return windowAttribute(window->window, attribute);
    }
    return std::unexpected(AXError::invalidUIElement);
}

AXError Accessibility::setAttributeValue(const AXUIElement& element, std::string_view attribute, const AXValue& value) {
    const auto* window = dynamic_cast<const WindowElement*>(&element.contents());
    if (window == nullptr) {
        return AXError::attributeUnsupported;
    }
    const auto present = facts(window->window);
    if (!present) {
        return present.error();
    }
    if ((*present)->isFullscreen) {
        return AXError::cannotComplete;
    }
    PlacementRequest part;
    if (attribute == AXAttribute::position) {
        const auto* point = std::get_if<corvid::CGPoint>(&value);
        const RootFacts* root = turn.root();
        if (point == nullptr || root == nullptr) {
            return point == nullptr ? AXError::illegalArgument : AXError::cannotComplete;
        }
        const corvid::CGPoint origin = root->monitors.front().origin;
        part.position = corvid::CGPoint{point->x + origin.x, point->y + origin.y};
    } else if (attribute == AXAttribute::size) {
        const auto* size = std::get_if<corvid::CGSize>(&value);
        if (size == nullptr) {
            return AXError::illegalArgument;
        }
        part.size = *size;
    } else {
        return AXError::attributeUnsupported;
    }
    placement.request(window->window, part);
    return AXError::success;
}

std::expected<ProcessIdentifier, AXError> Accessibility::processIdentifier(const AXUIElement& element) {
    if (const auto* application = dynamic_cast<const ApplicationElement*>(&element.contents())) {
        return application->process;
    }
    if (const auto* window = dynamic_cast<const WindowElement*>(&element.contents())) {
        const auto present = facts(window->window);
        if (!present) {
            return std::unexpected(present.error());
        }
        return (*present)->process;
    }
    return std::unexpected(AXError::invalidUIElement);
}

std::optional<AXValue> Accessibility::createValue(corvid::CGPoint point) {
    return std::isfinite(point.x) && std::isfinite(point.y) ? std::optional<AXValue>(point) : std::nullopt;
}

std::optional<AXValue> Accessibility::createValue(corvid::CGSize size) {
    return std::isfinite(size.width) && std::isfinite(size.height) ? std::optional<AXValue>(size) : std::nullopt;
}

bool Accessibility::isProcessTrusted() {
    return askForTrust();
}

// X11 has nobody to ask: a window manager is there or it is not.
bool Accessibility::isProcessTrustedWithPrompt() {
    return askForTrust();
}

std::expected<AXValue, AXError> Accessibility::applicationAttribute(ProcessIdentifier process,
                                                                    std::string_view attribute) {
    if (attribute == AXAttribute::focusedWindow) {
        return focusedWindow(process);
    }
    if (attribute == AXAttribute::windows) {
        return windows(process);
    }
    return std::unexpected(AXError::attributeUnsupported);
}

std::expected<AXValue, AXError> Accessibility::windowAttribute(xcb_window_t window, std::string_view attribute) {
    const bool isPosition = attribute == AXAttribute::position;
    if (!isPosition && attribute != AXAttribute::size) {
        return attribute == AXAttribute::subrole ? subrole(window) : std::unexpected(AXError::attributeUnsupported);
    }
    placement.settle(window);
    const RootFacts* root = turn.root();
    const auto present = facts(window);
    // A window that has not come to rest in time has no frame that could be told.
    if (!present || root == nullptr || connection.isExhausted()) {
        return std::unexpected(present ? AXError::cannotComplete : present.error());
    }
    const corvid::CGRect visible = visibleRectangle((*present)->geometry);
    if (!isPosition) {
        return AXValue(visible.size);
    }
    const corvid::CGPoint origin = root->monitors.front().origin;
    return AXValue(corvid::CGPoint{visible.origin.x - origin.x, visible.origin.y - origin.y});
}

std::expected<AXValue, AXError> Accessibility::focusedWindow(ProcessIdentifier process) {
    const RootFacts* root = turn.root();
    if (root == nullptr || root->activeWindow == XCB_WINDOW_NONE) {
        return std::unexpected(AXError::noValue);
    }
    const auto active = facts(root->activeWindow);
    if (!active) {
        return std::unexpected(active.error());
    }
    if ((*active)->process != process || (*active)->kind == WindowKind::furniture) {
        return std::unexpected(AXError::noValue);
    }
    return AXValue(windowElement(root->activeWindow));
}

std::expected<AXValue, AXError> Accessibility::windows(ProcessIdentifier process) {
    const RootFacts* root = turn.root();
    if (root == nullptr) {
        return std::unexpected(AXError::cannotComplete);
    }
    // Windows that are known to be another process's need not be asked.
    std::vector<xcb_window_t> clients = root->clients;
    std::erase_if(clients, [&](xcb_window_t client) {
        const ManagedWindow* known = managedWindows.find(client);
        return known != nullptr && known->process != process;
    });
    turn.readWindows(clients);
    if (connection.isExhausted()) {
        return std::unexpected(AXError::cannotComplete);
    }
    std::vector<AXUIElement> owned;
    for (const xcb_window_t client : clients) {
        const WindowFacts* clientFacts = turn.window(client);
        if (clientFacts != nullptr && clientFacts->process == process) {
            owned.push_back(windowElement(client));
        }
    }
    return AXValue(std::move(owned));
}

std::expected<AXValue, AXError> Accessibility::subrole(xcb_window_t window) {
    const RootFacts* root = turn.root();
    const auto present = facts(window);
    if (!present || root == nullptr) {
        return std::unexpected(present ? AXError::cannotComplete : present.error());
    }
    const bool isManaged = std::ranges::find(root->clients, window) != root->clients.end();
    return AXValue(subroleName(isManaged ? (*present)->kind : WindowKind::furniture));
}

std::expected<const WindowFacts*, AXError> Accessibility::facts(xcb_window_t window) {
    if (const WindowFacts* present = turn.window(window)) {
        return present;
    }
    return std::unexpected(connection.isExhausted() ? AXError::cannotComplete : AXError::invalidUIElement);
}

} // namespace platform::x11
