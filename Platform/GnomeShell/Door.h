#pragma once

#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/GnomeShell/ShellLink.h"

#include <functional>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// GNOME Shell's windows, through our extension in it. The extension says that windows have moved, once; where they are
/// is asked for when somebody reads. Points of the shell's space are logical pixels; its origin is the top-left corner
/// of the rectangle around all monitors.
class Door final : public compositor::Door, private ShellLink::Listener {
public:
    /// What is done about a closed door, and the reason why it is closed. Neither may be empty.
    struct Way {
        std::function<void()> show;
        std::function<AccessObstacle()> obstacle;
    };

    /// Link and table must outlive the door.
    Door(ShellLink& link, compositor::WindowTable& table, Way way);

    void refresh(Instant deadline) override;
    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;

    void prompt() override { way.show(); }

    [[nodiscard]] AccessObstacle obstacle() const override { return way.obstacle(); }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

private:
    void opened(const Hello& hello, bool isNew) override;
    void closed() override;
    void told(std::string_view signal, sd_bus_message* message) override;

    void put(const compositor::WindowIdentifier& identifier, const corvid::CGRect& frame, bool isFullscreen);
    void showFocus();

    ShellLink& link;
    compositor::WindowTable& table;
    Way way;
    /// Whatever has the keyboard, a window of the table or not.
    std::optional<compositor::WindowIdentifier> focused;
    bool areFramesStale = false;
};

} // namespace platform::gnomeshell
