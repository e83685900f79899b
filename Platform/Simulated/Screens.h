#pragma once

#include "Platform/Seam/Desktop/Screens.h"
#include "Platform/Simulated/Trace.h"

#include <utility>
#include <vector>

namespace platform::simulated {

class Screens final : public platform::Screens {
public:
    explicit Screens(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] std::vector<Screen> screens() override {
        trace.record("read screens");
        return attached;
    }

    /// Replaces all screens, the primary one first.
    void attach(std::vector<Screen> screens) { attached = std::move(screens); }

private:
    Trace& trace;
    /// A screen of 1920 by 1080 points with a panel of 25 at the top.
    std::vector<Screen> attached{{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1055}}}};
};

} // namespace platform::simulated
