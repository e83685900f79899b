#pragma once

#include "Platform/GnomeShell/ShellLink.h"
#include "Platform/Linux/HandledHotKeys.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace platform::gnomeshell {

/// Global hot keys that the shell holds for us. It knows of all its own keys, so a combination that one of them has is
/// refused, or borrowed from the shell: the extension looks at every press of such a key whether it is ours, and
/// follows the shell's settings. With the link, it gives all of them back. A hot key is lost that somebody else holds
/// when it is to be renewed, or that is no longer lent.
class HotKeys final : public linux::HandledHotKeys, private ShellLink::Listener {
public:
    /// How long after a busy shell has not answered it is asked again for its keys.
    static constexpr Duration untilRetry = std::chrono::milliseconds(500);

    /// Presses are handled in a later turn of the loop. Loop and link must outlive the hot keys.
    HotKeys(linux::MainLoop& mainLoop, ShellLink& link);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;

private:
    /// Key code and modifiers.
    using Carbon = std::pair<std::uint32_t, std::uint32_t>;

    struct Registered {
        Carbon carbon;
        std::string accelerator;
        EventHotKeyID name;
        /// Whether the shell has said that the key is ours. One that is too busy to answer has refused nothing.
        bool isConfirmed = false;
        bool isBorrowed = false;
    };

    /// The shell's answer to a request for a key.
    enum class Hold : std::uint8_t {
        refused,
        /// Refused, but to be had by borrowing.
        lendable,
        free,
        borrowed,
    };

    void opened(const Hello& hello, bool isNew) override;
    void closed() override;
    void told(std::string_view signal, sd_bus_message* message) override;

    /// Asks for a key, and with consent borrows one that is not free; nothing where no answer came in time.
    [[nodiscard]] std::optional<Hold> take(std::uint32_t number, const std::string& accelerator);
    /// Asks for all keys that are not confirmed, and later again for those that still are not.
    void confirm();
    void confirmAt(Instant time, Duration tolerance);
    void press(std::uint32_t number);

    linux::MainLoop& mainLoop;
    ShellLink& link;
    /// By the numbers under which the extension knows them.
    std::map<std::uint32_t, Registered> registrations;
    std::uint32_t lastNumber = 0;
    bool borrows = false;
    /// Refused, and to be had by borrowing.
    std::set<Carbon> lendable;
    std::unique_ptr<ScheduledWork> confirmation;
    /// Work that outlives the hot keys finds nothing here.
    std::shared_ptr<HotKeys*> self = std::make_shared<HotKeys*>(this);
};

} // namespace platform::gnomeshell
