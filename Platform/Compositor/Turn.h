#pragma once

#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Loop/TurnDeadline.h"

namespace platform::compositor {

/// The state of the compositor in one turn of the event loop: the first question of a turn brings the table up to date.
/// Main thread only.
class Turn {
public:
    /// All have to outlive this.
    Turn(const WindowTable& windows, WindowAccess& access, linux::TurnDeadline& limit)
        : windows(windows)
        , access(access)
        , limit(limit) {}

    /// A new turn: what was read is read again.
    void begin() { isRead = false; }

    /// The table as it is in this turn; null without access.
    [[nodiscard]] const WindowTable* table();

    /// The end of all waiting in this turn.
    [[nodiscard]] linux::TurnDeadline& deadline() { return limit; }

private:
    const WindowTable& windows;
    WindowAccess& access;
    linux::TurnDeadline& limit;
    bool isRead = false;
};

} // namespace platform::compositor
