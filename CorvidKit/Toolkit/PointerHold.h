#pragma once

#include "Platform/MainActor.h"

#include <chrono>
#include <functional>
#include <memory>

namespace corvid::toolkit {

/// Holds the pointer for a window for as long as its user does something with it. A screen locker has to have the
/// pointer to itself, and does not lock while another program holds it. Main thread only.
class PointerHold {
public:
    /// How long it is held without input. Desktops offer a minute as the shortest time after which they lock.
    static constexpr std::chrono::seconds patience{30};
    /// The pause between two tries, and their number. Another program may hold the pointer at first: a panel does while
    /// the button is down that opened the window.
    static constexpr std::chrono::milliseconds pause{20};
    static constexpr int mostTries = 100;

    /// `hold` takes the pointer or lets go of it, and gives whether that was done.
    PointerHold(platform::MainActor& mainActor, std::function<bool(bool)> hold)
        : mainActor(mainActor)
        , hold(std::move(hold)) {}

    /// Takes the pointer, as soon as it can be had.
    void begin();

    /// Lets go of it.
    void end();

    /// To be called with everything that the user does in the window. Takes the pointer again after a time without.
    void noticeInput();

private:
    void take();
    void watch();

    platform::MainActor& mainActor;
    std::function<bool(bool)> hold;
    bool isWanted = false;
    bool isHeld = false;
    int tries = 0;
    platform::Instant lastInput;
    std::unique_ptr<platform::ScheduledWork> pendingTry;
    std::unique_ptr<platform::ScheduledWork> pendingEnd;
};

} // namespace corvid::toolkit
