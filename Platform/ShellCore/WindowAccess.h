#pragma once

#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/ShellCore/ShellLink.h"

#include <functional>
#include <optional>
#include <string>

namespace platform::shellcore {

/// The windows of a shell, through our core in it. The core reports once that windows have moved; this
/// requests their frames when they are read. Points of the shell's space are logical pixels; its origin is the top-left
/// corner of the rectangle around all monitors.
class WindowAccess final : public compositor::WindowAccess, private ShellLink::Listener {
public:
    /// The remedy for a missing access, and the reason why it is missing. Neither may be empty.
    struct Opening {
        std::function<void()> show;
        std::function<AccessObstacle()> obstacle;
    };

    /// Link and table must outlive this.
    WindowAccess(ShellLink& link, compositor::WindowTable& table, Opening opening);

    void refresh(Instant deadline) override;
    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;

    void prompt() override { opening.show(); }

    [[nodiscard]] AccessObstacle obstacle() const override { return opening.obstacle(); }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

private:
    void opened(const Hello& hello, bool isNew) override;
    void closed() override;
    void signalArrived(std::string_view signal, sd_bus_message* message) override;

    void put(const compositor::WindowIdentifier& identifier, const corvid::CGRect& frame, bool isFullscreen);
    void showFocus();

    ShellLink& link;
    compositor::WindowTable& table;
    Opening opening;
    /// The focused object, whether it is a window of the table or not.
    std::optional<compositor::WindowIdentifier> focused;
    bool areFramesStale = false;
};

} // namespace platform::shellcore
