#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Control/Session.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Seam/Requests/ControlRequests.h"

#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace platform::linux {

/// Asks the running program from another process, and waits for its answers. Needs no event loop.
class ControlClient final : public ControlRequests {
public:
    /// The longest that one client waits for all its answers together.
    static constexpr std::chrono::milliseconds patience{2000};

    /// The program that has a session's `SingleInstance`. Where there is none, every request answers `notRunning`.
    /// Waits while others wait there in too great a number, at most for `patience`.
    [[nodiscard]] static ControlClient ofSession(const Session& session);

    /// The program that owns the name on the user's message bus: for callers that do not know the display.
    [[nodiscard]] static ControlClient onBus(const std::optional<std::string>& address);

    ControlAnswer<void> open() override;
    ControlAnswer<ControlStatus> status() override;
    /// Returns with the answer.
    void perform(std::string_view action, Answered answered) override;
    ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) override;
    ControlAnswer<void> setBorrowsShortcuts(bool borrows) override;

    /// If that is observable (on a session's socket), also waits until the program has ended.
    ControlAnswer<void> quit() override;

private:
    using Clock = std::chrono::steady_clock;

    ControlClient(OwnedBus bus, ControlRefusal refusal, bool isPeer, Clock::time_point deadline);

    [[nodiscard]] ControlAnswer<OwnedMessage> call(const char* member,
                                                   std::initializer_list<std::string_view> arguments);
    [[nodiscard]] ControlAnswer<void> order(const char* member, std::initializer_list<std::string_view> arguments);
    /// Makes the library's next step, or waits if there is none. Negative: an errno.
    [[nodiscard]] int turn();

    OwnedBus bus;
    /// The answer to every request while there is no connection.
    ControlRefusal absence;
    bool isPeer;
    Clock::time_point deadline;
};

} // namespace platform::linux
