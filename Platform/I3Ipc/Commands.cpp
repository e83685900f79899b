#include "Platform/I3Ipc/Commands.h"

#include <algorithm>
#include <cmath>

namespace platform::i3ipc {

namespace {

/// As a number of the command language. Coordinates far beyond any screen would not be understood.
std::string number(double value) {
    constexpr double farthest = 1 << 20;
    return std::to_string(std::lround(std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0));
}

} // namespace

std::string movingCommand(corvid::CGPoint topLeft) {
    return "move absolute position " + number(topLeft.x) + " px " + number(topLeft.y) + " px";
}

std::string placingCommands(const corvid::CGRect& frame) {
    return "floating enable, resize set width " + number(frame.size.width) + " px height " + number(frame.size.height) +
           " px, " + movingCommand(frame.origin);
}

} // namespace platform::i3ipc
