#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The status of the running program, for other processes.
struct ControlStatus {
    struct Shortcut {
        /// The action's raw value.
        std::string action;
        /// The keys in this desktop's notation. UTF-8.
        std::string keys;
        /// "active", "taken" (another program holds it) or "off" (no shortcut is registered).
        std::string state;
        /// The holder of a taken one, and the keys' function there, in the user's language. UTF-8; empty if it is
        /// unknown.
        std::string heldBy = {};
        std::string purpose = {};
        /// Active and returned to its holder when the program ends, or taken and possible to borrow.
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
    /// Whether the user allows the program to borrow shortcuts.
    bool borrowsShortcuts = false;
    /// Whether another build of the program has replaced it on the disk.
    bool isReplaced = false;
    std::string version;
    /// The kind of desktop, as in "X11".
    std::string backend;
    std::vector<Shortcut> shortcuts;
    /// Actions' raw values by bundle identifier.
    std::map<std::string, std::string, std::less<>> rules;

    friend bool operator==(const ControlStatus&, const ControlStatus&) = default;
};

/// The reason for a refused request.
struct ControlRefusal {
    enum class Kind : std::uint8_t {
        /// The request itself is malformed.
        invalid,
        /// The program is switched off.
        paused,
        /// The desktop does not allow the program to move windows.
        notTrusted,
        /// No window has the focus.
        noWindow,
        /// There is no running program.
        notRunning,
        /// The running program did not reply in time.
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

/// The requests that the running program accepts from other processes: the logic implements them, and on the other side
/// of a bus or a socket a client offers the same functions. Main thread only.
class ControlRequests {
public:
    ControlRequests() = default;
    ControlRequests(const ControlRequests&) = delete;
    ControlRequests& operator=(const ControlRequests&) = delete;
    virtual ~ControlRequests() = default;

    /// Makes the program show itself.
    virtual ControlAnswer<void> open() = 0;

    [[nodiscard]] virtual ControlAnswer<ControlStatus> status() = 0;

    /// Receives the answer to a request that may take longer.
    using Answered = std::function<void(const ControlAnswer<void>& answer)>;

    /// Carries out an action or a placement (its raw value) on the focused window, as a press of a shortcut would.
    /// `answered` is called exactly once: before this returns or, if the desktop is late, within about a second.
    virtual void perform(std::string_view action, Answered answered) = 0;

    /// Sets the rule of an application to an action's raw value, or removes it for "none".
    virtual ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) = 0;

    /// Allows the program to borrow shortcuts that others hold, or makes it give back those that it has borrowed.
    virtual ControlAnswer<void> setBorrowsShortcuts(bool borrows) = 0;

    /// Ends the program.
    virtual ControlAnswer<void> quit() = 0;
};

} // namespace platform
