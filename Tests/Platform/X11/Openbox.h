#pragma once

#include <sys/types.h>

namespace platform::x11 {

/// A real window manager, on the environment's DISPLAY. Ends with this.
class Openbox {
public:
    /// Starts it with an option of its command line.
    explicit Openbox(const char* option);
    Openbox(const Openbox&) = delete;
    Openbox& operator=(const Openbox&) = delete;
    ~Openbox();

    [[nodiscard]] static bool isInstalled();

private:
    pid_t process;
};

} // namespace platform::x11
