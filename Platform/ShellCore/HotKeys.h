#pragma once

#include "Platform/Linux/HotKeys/HandledHotKeys.h"
#include "Platform/Linux/Loop/LaterWork.h"
#include "Platform/ShellCore/ShellLink.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform::shellcore {

/// Global hot keys that the shell holds for us. It knows of all its own keys, so a combination that one of them has is
/// refused, or borrowed from the shell: the core looks at every press of such a key whether it is ours, and
/// follows the shell's settings. With the link, it gives all of them back. A hot key is lost that somebody else holds
/// when it is to be renewed, or that is no longer lent.
class HotKeys final : public linux::HandledHotKeys, private ShellLink::Listener {
public:
    /// The delay before a repeated request to a shell that was too busy to reply.
    static constexpr Duration untilRetry = std::chrono::milliseconds(500);

    /// Presses are handled in a later turn of the loop. Loop and link must outlive the hot keys.
    HotKeys(linux::MainLoop& mainLoop, ShellLink& link);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;
    [[nodiscard]] std::optional<LoanObstacle> loanObstacle(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const override;

private:
    /// Key code and modifiers.
    using Carbon = std::pair<std::uint32_t, std::uint32_t>;

    struct Registered {
        Carbon carbon;
        std::string accelerator;
        EventHotKeyID name;
        /// Whether the shell has confirmed that the key is ours. A shell that is too busy to reply has refused nothing.
        bool isConfirmed = false;
        bool isBorrowed = false;
    };

    /// The shell's answer to a request for a key.
    struct Hold {
        bool isHeld = false;
        bool isBorrowed = false;
        /// Why one that is not held is not lent either; nothing where it would be.
        std::optional<LoanObstacle> obstacle = {};
    };

    void opened(const Hello& hello, bool isNew) override;
    void closed() override;
    void signalArrived(std::string_view signal, sd_bus_message* message) override;

    /// Requests a key, and with consent borrows one that is not free; empty if the reply timed out.
    [[nodiscard]] std::optional<Hold> take(std::uint32_t number, const std::string& accelerator);
    /// The answer for a key that is not ours: asks whether it would be lent.
    [[nodiscard]] std::optional<Hold> refusal(const std::string& accelerator);
    /// Asks for all keys that are not confirmed, and later again for those that still are not.
    void confirm();
    void confirmAt(Instant time, Duration tolerance);
    void press(std::uint32_t number);

    linux::MainLoop& mainLoop;
    ShellLink& link;
    /// By the core's numbers for them.
    std::map<std::uint32_t, Registered> registrations;
    std::uint32_t lastNumber = 0;
    bool borrows = false;
    linux::RefusedKeys<Carbon> refused;
    std::unique_ptr<ScheduledWork> confirmation;
    /// Work that outlives the hot keys finds nothing here.
    linux::LaterWork later{mainLoop};
};

} // namespace platform::shellcore
