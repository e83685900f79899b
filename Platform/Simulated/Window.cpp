#include "Platform/Simulated/Window.h"

#include "Platform/Simulated/Element.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace platform::simulated {

namespace {

double settleLength(double asked, double minimum, double maximum, double increment) {
    const double within = std::min(maximum, std::max(minimum, asked));
    return increment > 0 ? minimum + std::floor((within - minimum) / increment) * increment : within;
}

} // namespace

corvid::CGSize SizeRules::settle(corvid::CGSize asked, corvid::CGSize current) const {
    if (isFixed) {
        return current;
    }
    return {settleLength(asked.width, minimum.width, maximum.width, increment.width),
            settleLength(asked.height, minimum.height, maximum.height, increment.height)};
}

Window::Window(int number, ProcessIdentifier process, const platform::MainActor& clock, WindowOptions options)
    : subrole(std::move(options.subrole))
    , sizes(options.sizes)
    , lateness(options.lateness)
    , ownNumber(number)
    , owner(process)
    , clock(clock)
    , current(options.frame) {
}

AXUIElement Window::element() const {
    return AXUIElement(std::make_shared<Element>(owner, ownNumber));
}

corvid::CGRect Window::frame() {
    settle();
    return current;
}

corvid::CGRect Window::readFrame() {
    settle();
    for (Pending& wish : pending) {
        wish.readingsLeft = std::max(0, wish.readingsLeft - 1);
    }
    return current;
}

void Window::moveTo(corvid::CGRect frame) {
    settle();
    current = frame;
}

void Window::request(std::variant<corvid::CGPoint, corvid::CGSize> wish) {
    pending.push_back({wish, lateness.readings, clock.now() + lateness.time});
    settle();
}

void Window::settle() {
    while (!pending.empty() && pending.front().readingsLeft == 0 && pending.front().due <= clock.now()) {
        if (const auto* position = std::get_if<corvid::CGPoint>(&pending.front().wish)) {
            current.origin = *position;
        } else {
            current.size = sizes.settle(std::get<corvid::CGSize>(pending.front().wish), current.size);
        }
        pending.pop_front();
    }
}

} // namespace platform::simulated
