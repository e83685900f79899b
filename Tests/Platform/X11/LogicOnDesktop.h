#pragma once

#include "FollowedDesktop.h"
#include "Platform/Seam/Platform.h"
#include "Platform/Simulated/Desktop.h"

#include <functional>

namespace platform::x11 {

/// Runs the logic on a started desktop, while this lives. The parts that do not need an X server are simulated,
/// including the clock.
class LogicOnDesktop {
public:
    explicit LogicOnDesktop(FollowedDesktop& followed)
        : followed(followed) {}

    /// Runs a function in a turn of the event loop, as a key press or a timer would; false if that turn does not come.
    [[nodiscard]] bool inATurn(const std::function<void()>& work) {
        bool isDone = false;
        followed.mainLoop.post([&] {
            work();
            isDone = true;
        });
        return followed.runUntil([&] { return isDone; });
    }

    simulated::Desktop other;

private:
    FollowedDesktop& followed;
    Platform table{other.around(followed.desktop->parts(), followed.catalogue)};
    Installation installation{table};
};

} // namespace platform::x11
