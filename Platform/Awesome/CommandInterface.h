#pragma once

#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <optional>
#include <string>

namespace platform::awesome {

/// awesome's interface for commands on the session bus (awesome-client(1), the library `awful.remote`): it executes a
/// text in Lua. An awesome without D-Bus, or without that library, has none.
///
/// The first awesome of a session owns the name. Whoever uses this compares the process with that of the window
/// manager. Main thread only.
class CommandInterface final : private linux::SessionBus::Listener {
public:
    struct Owner {
        /// Its connection to the bus; empty without one.
        std::string connection;
        ProcessIdentifier process = 0;

        friend bool operator==(const Owner&, const Owner&) = default;
    };

    /// `bus` must be used by nobody else, because this waits for replies, and must outlive this.
    explicit CommandInterface(linux::SessionBus& bus);

    /// Waits until it is known who owns the name, at the latest until `deadline`.
    void await(Instant deadline);

    /// As far as it is known; does not wait.
    [[nodiscard]] const Owner& owner() const { return present; }

    /// The text that the owner returns for this one; empty without an owner, without a text, or without a reply before
    /// the deadline. The owner may still execute it then.
    [[nodiscard]] std::optional<std::string> evaluate(const std::string& script, Instant deadline);

private:
    struct Answers;

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;
    void ownerChanged();

    linux::SessionBus& sessionBus;
    sd_bus* bus = nullptr;
    linux::NameOwner name;
    linux::OwnedSlot question;
    Owner present;
    bool isKnown = false;
};

} // namespace platform::awesome
