#pragma once

#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/MainActor.h"

#include <chrono>
#include <optional>

namespace platform::compositor {

/// The reading of the compositor's state in one turn of the event loop: the table is brought up to date at its first
/// use, and all waiting of the turn ends at one deadline. Main thread only.
class Turn {
public:
    /// The limit for a turn's waiting, from its first request on.
    static constexpr std::chrono::milliseconds patience{250};

    Turn(const WindowTable& windows, Door& door, const MainActor& mainActor)
        : windows(windows)
        , door(door)
        , mainActor(mainActor) {}

    /// Starts a new turn: the state is read again, with a new deadline.
    void begin() {
        isRead = false;
        end.reset();
    }

    /// The table as it is in this turn; null while the door is closed.
    [[nodiscard]] const WindowTable* table();

    /// The end of the turn's time.
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
