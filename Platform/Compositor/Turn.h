#pragma once

#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/MainActor.h"

#include <chrono>
#include <optional>

namespace platform::compositor {

/// What is read of the compositor in one turn of the event loop: the table is brought up to date when it is first
/// needed, and all waiting of the turn together ends at one deadline. Main thread only.
class Turn {
public:
    /// How long a turn may wait in all, from its first question on.
    static constexpr std::chrono::milliseconds patience{250};

    Turn(const WindowTable& windows, Door& door, const MainActor& mainActor)
        : windows(windows)
        , door(door)
        , mainActor(mainActor) {}

    /// A new turn: what was read is read again, and there is time again.
    void begin() {
        isRead = false;
        end.reset();
    }

    /// The table as it is in this turn; null while the door is closed.
    [[nodiscard]] const WindowTable* table();

    /// When the turn's time is used up.
    [[nodiscard]] Instant deadline();

    [[nodiscard]] bool isExhausted() { return mainActor.now() >= deadline(); }

private:
    const WindowTable& windows;
    Door& door;
    const MainActor& mainActor;
    bool isRead = false;
    std::optional<Instant> end;
};

} // namespace platform::compositor
