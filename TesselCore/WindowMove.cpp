#include "TesselCore/WindowMove.h"

#include "TesselCore/WindowLayout.h"

namespace tessel {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;

} // namespace

std::vector<WindowMove> WindowMove::steps(const CGRect& current, const CGRect& target) {
    if (current.width() - target.width() == 0 && current.height() - target.height() == 0) {
        return {setPosition(target.origin)};
    }
    return {setSize(target.size), setPosition(target.origin), setSize(target.size)};
}

std::optional<CGPoint> WindowMove::correction(WindowAction action, const CGSize& result, const CGRect& target,
                                              const CGRect& visible) {
    if (WindowLayout::sizeMatches(result, {target.width(), target.height()}, sizeTolerance)) {
        return std::nullopt;
    }
    return WindowLayout::fallbackFrame(action, result, visible).origin;
}

} // namespace tessel
