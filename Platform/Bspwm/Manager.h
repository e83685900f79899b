#pragma once

#include "Platform/Compositor/Json.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/X11/TilingManager.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace platform::bspwm {

/// Sends requests to bspwm over its socket (bspc(1)). Each request is a connection of its own, which bspwm closes after
/// the reply. bspwm moves floating windows on a plain request; its socket is needed to take a window out of the layout.
class Manager final : public x11::TilingManager {
public:
    /// `clock` must outlive this.
    explicit Manager(const MainActor& clock)
        : clock(clock) {}

    [[nodiscard]] std::string_view name() const override { return "bspwm"; }

    [[nodiscard]] bool isReachable(x11::Connection& display) override;
    [[nodiscard]] std::optional<x11::Layout> readLayout(x11::Connection& display) override;
    bool place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) override;

private:
    /// The whole reply; empty if it is a refusal, or did not end within the turn's time.
    [[nodiscard]] std::optional<std::string> ask(x11::Connection& display,
                                                 std::initializer_list<std::string_view> words) const;
    [[nodiscard]] std::optional<compositor::Json> query(x11::Connection& display,
                                                        std::initializer_list<std::string_view> words) const;

    const MainActor& clock;
};

} // namespace platform::bspwm
