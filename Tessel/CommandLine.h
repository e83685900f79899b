#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

/// The request of a command line.
namespace tessel::CommandLine {

/// Run until a request or a signal ends the program.
struct Run {
    friend bool operator==(const Run&, const Run&) = default;
};

/// Print a text on standard output and end with status 0.
struct Print {
    std::string text;

    friend bool operator==(const Print&, const Print&) = default;
};

/// Print a line on standard error and end with status 2.
struct Refuse {
    std::string line;

    friend bool operator==(const Refuse&, const Refuse&) = default;
};

/// Send a request to the running program, print its reply, and exit.
struct Ask {
    enum class What : std::uint8_t {
        status,
        /// Carry out an action: its raw value.
        perform,
        /// Set a rule: bundle identifier, and an action's raw value or "none".
        rule,
        /// Borrow the shortcuts that others hold.
        takeShortcuts,
        giveBackShortcuts,
        quit,
    };

    What what = What::status;
    std::vector<std::string> arguments;
    /// Whether the answer has the form of JSON, for programs.
    bool json = false;

    friend bool operator==(const Ask&, const Ask&) = default;
};

/// End every running instance, and remove all files that the program keeps for the user.
struct Forget {
    /// Whether the answer has the form of JSON, for programs.
    bool json = false;

    friend bool operator==(const Forget&, const Forget&) = default;
};

using Request = std::variant<Run, Print, Refuse, Ask, Forget>;

/// Parses the arguments, the program's own path first.
[[nodiscard]] Request parse(std::span<const std::string> arguments, const std::string& version);

} // namespace tessel::CommandLine
