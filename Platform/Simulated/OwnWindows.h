#pragma once

#include "Platform/OwnWindows.h"
#include "Platform/Simulated/Trace.h"

#include <optional>
#include <string>

namespace platform::simulated {

/// Windows of which only the numbers are known.
///
/// Trace: "place window 7 at (10, 20)", "give window 7 the keyboard".
class OwnWindows final : public platform::OwnWindows {
public:
    explicit OwnWindows(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override { return pointerPosition; }

    void place(Number window, corvid::CGPoint topLeft) override {
        trace.record("place window " + std::to_string(window) + " at " + text(topLeft));
    }

    void takeKeyboard(Number window) override {
        trace.record("give window " + std::to_string(window) + " the keyboard");
        keyboardOwner = window;
    }

    [[nodiscard]] bool hasKeyboard(Number window) override { return keyboardOwner == window; }

    [[nodiscard]] bool areBlended() override { return hasCompositor; }

    /// In points in the screen space; nothing for a desktop that does not say.
    std::optional<corvid::CGPoint> pointerPosition = corvid::CGPoint{960, 540};
    bool hasCompositor = true;
    /// Nothing while another program has it.
    std::optional<Number> keyboardOwner;

private:
    Trace& trace;
};

} // namespace platform::simulated
