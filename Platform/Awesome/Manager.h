#pragma once

#include "Platform/Awesome/CommandInterface.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/TilingManager.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform::awesome {

/// Gives awesome commands over the session bus. awesome moves floating windows on a plain request; the bus is needed to
/// take a window out of the layout, and to release a maximized one: awesome 4.3 ignores the message for that.
class Manager final : public x11::TilingManager {
public:
    /// `mainLoop` must outlive this. Nothing is connected before awesome is the window manager.
    explicit Manager(linux::MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    [[nodiscard]] std::string_view name() const override { return "awesome"; }

    [[nodiscard]] bool isIndispensable() const override { return false; }

    /// Whether the awesome on the bus is the process that is the window manager. The first call waits for the bus.
    [[nodiscard]] bool isReachable(x11::Connection& display) override;
    [[nodiscard]] std::optional<x11::Layout> readLayout(x11::Connection& display) override;
    bool place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) override;

private:
    /// A connection of its own, because this waits for replies.
    struct Link {
        explicit Link(linux::MainLoop& mainLoop)
            : bus(mainLoop)
            , commands(bus) {}

        linux::SessionBus bus;
        CommandInterface commands;
    };

    linux::MainLoop& mainLoop;
    std::optional<Link> link;
    /// The last owner of the name that was compared with the window manager, and whether it is its process.
    std::string compared;
    bool isSame = false;
};

} // namespace platform::awesome
