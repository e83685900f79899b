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

    /// Runs the event loop until the program is to end; `didFinishLaunching` is called in its first turn. Gives the
    /// status that the program ends with.
    [[nodiscard]] virtual int run(std::function<void()> didFinishLaunching) = 0;

    /// Lets the windows that this program opens next take the keyboard, whatever has it now.
    virtual void activateIgnoringOtherApps() = 0;

    /// Ends the program after the present turn of the event loop.
    virtual void terminate() = 0;

    /// Whether another build of this program has taken its place on the disk since it was started.
    [[nodiscard]] virtual bool isReplaced() const = 0;

    /// Ends the program as `terminate` does, and starts what is in its place. Without effect where that cannot be run.
    virtual void restart() = 0;
};

} // namespace platform
