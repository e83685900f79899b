#pragma once

namespace platform {

/// The system's alert sound.
class Beep {
public:
    Beep() = default;
    Beep(const Beep&) = delete;
    Beep& operator=(const Beep&) = delete;
    virtual ~Beep() = default;

    /// Plays the sound as the user has set it (silence included) without waiting for its end. Main thread.
    virtual void beep() = 0;
};

} // namespace platform
