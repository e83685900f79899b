#pragma once

#include "Platform/Compositor/Turn.h"
#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Seam/Desktop/OwnWindows.h"

namespace platform::compositor {

/// Windows of this program, which the compositor knows by their titles: the window access positions them and gives them
/// the keyboard focus.
class OwnWindows final : public platform::OwnWindows {
public:
    OwnWindows(WindowAccess& access, Turn& turn)
        : access(access)
        , turn(turn) {}

    [[nodiscard]] Protocol protocol() const override { return Protocol::wayland; }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    [[nodiscard]] std::optional<corvid::CGRect> activeScreen() override;
    void place(Number window, const std::string& title, corvid::CGPoint topLeft) override;

    void takeKeyboard(Number /*window*/) override {}

    /// The compositor itself sends the toolkit the focus.
    [[nodiscard]] bool hasKeyboard(Number /*window*/) override { return false; }

    [[nodiscard]] bool isKeyboardElsewhere() override;

    [[nodiscard]] bool areBlended() override { return true; }

private:
    /// The primary output's frame, in the compositor's own space; empty while it is unknown.
    [[nodiscard]] std::optional<corvid::CGRect> primary();

    WindowAccess& access;
    Turn& turn;
};

} // namespace platform::compositor
