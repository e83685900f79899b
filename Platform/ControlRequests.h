#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// How the running program stands, for whoever asks from outside.
struct ControlStatus {
    struct Shortcut {
        /// The action's raw value.
        std::string action;
        /// The keys as a user of this desktop writes them. UTF-8.
        std::string keys;
        /// "active", "taken" (another program holds it) or "off" (nothing is registered at all).
        std::string state;
        /// The holder of a taken one, and what the keys do there, in the user's language. UTF-8; empty where nobody
        /// has said.
        std::string heldBy = {};
        std::string purpose = {};
        /// An active one that is its holder's again when the program ends, and a taken one that could be had so.
        bool isBorrowed = false;
        bool canBeBorrowed = false;
        /// Why a taken one cannot be borrowed: a word for programs, and a sentence in the user's language without its
        /// full stop. UTF-8; empty where it can, and where nobody has said.
        std::string notBorrowable = {};
        std::string whyNot = {};

        friend bool operator==(const Shortcut&, const Shortcut&) = default;
    };

    /// One word for programs, and one line for people.
    std::string status;
    std::string statusText;
    bool isEnabled = false;
    bool isTrusted = false;
    /// Whether the user lets the program borrow shortcuts.
    bool borrowsShortcuts = false;
    /// Whether another build of the program has taken its place on the disk.
    bool isReplaced = false;
    std::string version;
    /// The kind of desktop, as in "X11".
    std::string backend;
    std::vector<Shortcut> shortcuts;
    /// Actions' raw values by bundle identifier.
    std::map<std::string, std::string, std::less<>> rules;

    friend bool operator==(const ControlStatus&, const ControlStatus&) = default;
};

/// Why a request was not carried out.
struct ControlRefusal {
    enum class Kind : std::uint8_t {
        /// The request itself makes no sense.
        invalid,
        /// The program is switched off.
        paused,
        /// The desktop does not let the program move windows.
        notTrusted,
        /// No window has the focus.
        noWindow,
        /// There is no running program to ask.
        notRunning,
        /// The running program did not answer in time.
        noAnswer,
        /// Anything else.
        failed,
    };

    Kind kind = Kind::failed;
    /// A sentence without its full stop. UTF-8.
    std::string reason;

    friend bool operator==(const ControlRefusal&, const ControlRefusal&) = default;
};

template <typename Value>
using ControlAnswer = std::expected<Value, ControlRefusal>;

/// What can be asked of the running program from outside: the logic answers it, and on the other side of a bus or a
/// socket a client offers the same functions. Main thread only.
class ControlRequests {
public:
    ControlRequests() = default;
    ControlRequests(const ControlRequests&) = delete;
    ControlRequests& operator=(const ControlRequests&) = delete;
    virtual ~ControlRequests() = default;

    /// Asks the program to show itself.
    virtual ControlAnswer<void> open() = 0;

    [[nodiscard]] virtual ControlAnswer<ControlStatus> status() = 0;

    /// Carries out an action or a placement (its raw value) on the focused window, as a press of a shortcut would.
    virtual ControlAnswer<void> perform(std::string_view action) = 0;

    /// Sets the rule of an application to an action's raw value, or takes it away for "none".
    virtual ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) = 0;

    /// Lets the program borrow shortcuts that others hold, or has it give back those that it has borrowed.
    virtual ControlAnswer<void> setBorrowsShortcuts(bool borrows) = 0;

    /// Asks the program to end.
    virtual ControlAnswer<void> quit() = 0;
};

} // namespace platform
