#pragma once

#include <functional>

namespace platform {

/// This program, as the desktop sees it. Main thread only.
class ThisApplication {
public:
    ThisApplication() = default;
    ThisApplication(const ThisApplication&) = delete;
    ThisApplication& operator=(const ThisApplication&) = delete;
    virtual ~ThisApplication() = default;

    /// Runs the event loop until the program is ended; `didFinishLaunching` is called in its first turn. Returns the
    /// exit status.
    [[nodiscard]] virtual int run(std::function<void()> didFinishLaunching) = 0;

    /// Allows the windows that this program opens next to take the keyboard focus from any window.
    virtual void activateIgnoringOtherApps() = 0;

    /// Ends the program after the present turn of the event loop.
    virtual void terminate() = 0;

    /// Whether another build of this program has replaced it on the disk since its start.
    [[nodiscard]] virtual bool isReplaced() const = 0;

    /// Ends the program as `terminate` does, and starts its replacement. Without effect if that cannot be run.
    virtual void restart() = 0;
};

} // namespace platform
