#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The value of a desktop entry's `Exec` key (Desktop Entry Specification, The Exec key).
namespace platform::linux::ExecLine {

/// The program that a line starts.
struct Program {
    /// A path, or a name to look up in `PATH`. The script, where an interpreter runs one.
    std::string name;
    /// Whether it is given words of its own, beside the files or addresses to open: then the entry stands for a part of
    /// the program, or for a certain use of it.
    bool hasArguments = false;

    friend bool operator==(const Program&, const Program&) = default;
};

/// The program of a line, after `env` and its variables. Empty if the line is malformed, or passes a text to an
/// interpreter.
[[nodiscard]] std::optional<Program> program(const std::string& line);

/// The script that an interpreter (a shell, Python, Java and the like) reads by its command line; an empty text for an
/// interpreter that reads none; no value without an interpreter. `words` begins with the interpreter.
[[nodiscard]] std::optional<std::string> script(std::span<const std::string> words);

/// A word as it has to stand in the line.
[[nodiscard]] std::string quoted(std::string_view word);

/// The path of a program with that name: the path itself, or the first match in `searchPath` (colons between the
/// folders). Empty if there is no such executable program.
[[nodiscard]] std::optional<std::string> locate(const std::string& program, std::string_view searchPath);

} // namespace platform::linux::ExecLine
