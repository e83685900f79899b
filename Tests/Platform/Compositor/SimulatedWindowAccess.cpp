#include "SimulatedWindowAccess.h"

#include <algorithm>
#include <sstream>

namespace platform::compositor {

namespace {

std::string text(corvid::CGPoint point) {
    std::ostringstream stream;
    stream << "(" << point.x << ", " << point.y << ")";
    return stream.str();
}

std::string text(const corvid::CGRect& frame) {
    std::ostringstream stream;
    stream << text(frame.origin) << " " << frame.size.width << " x " << frame.size.height;
    return stream.str();
}

} // namespace

void SimulatedWindowAccess::refresh(Instant /*deadline*/) {
    trace.emplace_back("refresh");
    if (const auto happened = std::exchange(unreported, nullptr)) {
        happened();
    }
}

AXError SimulatedWindowAccess::place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) {
    const Duration patience = deadline - now();
    const bool waits = patience > Duration::zero();
    trace.push_back("place " + window + " at " + text(frame) + (waits ? "" : " without waiting"));
    const Window* present = table.find(window);
    if (present == nullptr) {
        return AXError::invalidUIElement;
    }
    if (!waits) {
        return AXError::success;
    }
    if (silent.contains(window) || settling > patience) {
        pass(patience);
        return AXError::cannotComplete;
    }
    pass(settling);
    Window settled = *present;
    settled.frame = frame;
    if (const auto least = leastSizes.find(window); least != leastSizes.end()) {
        settled.frame.size.width = std::max(frame.size.width, least->second.width);
        settled.frame.size.height = std::max(frame.size.height, least->second.height);
    }
    table.put(window, settled);
    return AXError::success;
}

void SimulatedWindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    trace.push_back("place own " + title + " at " + text(topLeft));
}

Window readyWindow(ProcessIdentifier process, const corvid::CGRect& frame) {
    Window window;
    window.clues.process = process;
    window.kind = WindowKind::standard;
    window.isReady = true;
    window.frame = frame;
    return window;
}

} // namespace platform::compositor
