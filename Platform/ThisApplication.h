#pragma once

namespace platform {

/// This program, as the desktop sees it. Main thread only.
class ThisApplication {
public:
    ThisApplication() = default;
    ThisApplication(const ThisApplication&) = delete;
    ThisApplication& operator=(const ThisApplication&) = delete;
    virtual ~ThisApplication() = default;

    /// Lets the windows that this program opens next take the keyboard, whatever has it now.
    virtual void activateIgnoringOtherApps() = 0;

    /// Ends the program after the present turn of the event loop.
    virtual void terminate() = 0;
};

} // namespace platform
