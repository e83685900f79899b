#pragma once

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/SessionLock.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace platform::linux {

/// The name of the login session that this process belongs to or, where it runs beside all of them as a service does,
/// of the one at the user's display. Empty where there is none. Reads the environment.
[[nodiscard]] std::string loginSession();

/// Listens to the login manager for its session (org.freedesktop.login1(5): the signal Lock, the property LockedHint),
/// and to any screensaver (ActiveChanged, of the interface of that name of whichever desktop). Stays connected to the
/// system's message bus for as long as there is a watch.
class SessionLock final : public platform::SessionLock {
public:
    /// Every program on the session bus is the user's, and is believed. The loop and the bus have to outlive this.
    SessionLock(MainLoop& mainLoop, SessionBus& sessionBus,
                std::optional<std::string> systemAddress = systemBusAddress(), std::string session = loginSession());

    [[nodiscard]] std::unique_ptr<LockWatch> watch(std::function<void()> locked) override;

    /// The same, and asks the login manager whether the session is locked already, which is reported as well.
    [[nodiscard]] std::unique_ptr<LockWatch> watchAndAsk(std::function<void()> locked);

private:
    class Announcement;
    class LoginManager;
    class ScreenSaver;
    class Watch;

    MainLoop& mainLoop;
    SessionBus& sessionBus;
    std::optional<std::string> systemAddress;
    std::string session;
};

} // namespace platform::linux
