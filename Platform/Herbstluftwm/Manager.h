#pragma once

#include "Platform/Herbstluftwm/CommandWindow.h"
#include "Platform/Herbstluftwm/Replies.h"
#include "Platform/X11/TilingManager.h"

#include <optional>
#include <string_view>

namespace platform::herbstluftwm {

/// Gives herbstluftwm commands, over the X server: nothing has to be connected, and a herbstluftwm that restarts is the
/// same to it.
class Manager final : public x11::TilingManager {
public:
    [[nodiscard]] std::string_view name() const override { return "herbstluftwm"; }

    /// Always: it is the window manager, and its commands come from where all requests come from.
    [[nodiscard]] bool isReachable(x11::Connection& /*display*/) override { return true; }

    [[nodiscard]] std::optional<x11::Layout> readLayout(x11::Connection& display) override;
    bool place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) override;

private:
    CommandWindow commands;
    /// As last read.
    State state;
};

} // namespace platform::herbstluftwm
