#pragma once

#include <span>
#include <string>
#include <variant>

/// What the command line asks for.
namespace tessel::CommandLine {

/// Run until told to end.
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

using Request = std::variant<Run, Print, Refuse>;

/// Reads the arguments, the program's own path first.
[[nodiscard]] Request parse(std::span<const std::string> arguments, const std::string& version);

} // namespace tessel::CommandLine
