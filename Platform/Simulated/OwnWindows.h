#pragma once

#include "Platform/Seam/Desktop/OwnWindows.h"
#include "Platform/Simulated/Trace.h"

#include <optional>
#include <string>

namespace platform::simulated {

/// Windows of which only the names are known: a number on X11, a title on Wayland.
///
/// Trace: "place window 7 at (10, 20)", "give window 7 the keyboard".
class OwnWindows final : public platform::OwnWindows {
public:
    explicit OwnWindows(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] Protocol protocol() const override { return spoken; }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override { return pointerPosition; }

    [[nodiscard]] std::optional<corvid::CGRect> activeScreen() override { return activeScreenFrame; }

    void place(Number window, const std::string& title, corvid::CGPoint topLeft) override {
        const std::string name = spoken == Protocol::x11 ? std::to_string(window) : title;
        trace.record("place window " + name + " at " + text(topLeft));
    }

    void takeKeyboard(Number window) override {
        trace.record("give window " + std::to_string(window) + " the keyboard");
        keyboardOwner = window;
    }

    [[nodiscard]] bool hasKeyboard(Number window) override { return keyboardOwner == window; }

    [[nodiscard]] bool isKeyboardElsewhere() override { return !keyboardOwner; }

    [[nodiscard]] bool areBlended() override { return hasCompositor; }

    /// In points in the screen space; empty for a desktop that does not report it.
    std::optional<corvid::CGPoint> pointerPosition = corvid::CGPoint{960, 540};
    std::optional<corvid::CGRect> activeScreenFrame;
    bool hasCompositor = true;
    Protocol spoken = Protocol::x11;
    /// Empty while another program has it.
    std::optional<Number> keyboardOwner;

private:
    Trace& trace;
};

} // namespace platform::simulated
