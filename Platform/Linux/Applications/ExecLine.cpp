#include "Platform/Linux/Applications/ExecLine.h"

#include "Platform/Linux/Applications/GLibMemory.h"
#include "Platform/Linux/Files/RegularFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ranges>
#include <vector>

namespace platform::linux::ExecLine {
namespace {

constexpr std::string_view digits = "0123456789.";

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// "python" for "/usr/bin/python3.11".
std::string_view withoutVersion(std::string_view path) {
    const std::string_view name = lastComponent(path);
    const std::size_t end = name.find_last_not_of(digits);
    return name.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool isInterpreter(std::string_view name) {
    constexpr std::array<std::string_view, 18> known{"ash", "bash",   "dash", "gjs",  "guile",  "java",
                                                     "ksh", "lua",    "mono", "node", "nodejs", "perl",
                                                     "php", "python", "ruby", "sh",   "wish",   "zsh"};
    return std::ranges::find(known, name) != known.end();
}

std::vector<std::string> words(const std::string& line) {
    int count = 0;
    char** raw = nullptr;
    if (g_shell_parse_argv(line.c_str(), &count, &raw, nullptr) == FALSE) {
        return {};
    }
    const GLibTexts list{raw};
    const std::span<char*> parts(raw, static_cast<std::size_t>(count));
    return {parts.begin(), parts.end()};
}

/// "%f", "%U" and so on, the placeholders of the files to open.
bool isFieldCode(std::string_view word) {
    return word.size() == 2 && word.front() == '%' && word.back() != '%';
}

std::string unescapedPercent(std::string_view word) {
    std::string result;
    for (std::size_t i = 0; i < word.size(); ++i) {
        result += word[i];
        if (word.substr(i, 2) == "%%") {
            ++i;
        }
    }
    return result;
}

/// The words behind "env" and its options and variables.
std::span<const std::string> behindEnvironment(std::span<const std::string> words) {
    if (words.empty() || lastComponent(words.front()) != "env") {
        return words;
    }
    words = words.subspan(1);
    while (!words.empty() && (words.front().starts_with('-') || words.front().contains('='))) {
        const bool hasValue = words.front() == "-u" || words.front() == "-C";
        words = words.subspan(std::min<std::size_t>(hasValue ? 2 : 1, words.size()));
    }
    return words;
}

/// Whether the interpreter's option takes the program from somewhere else than a file: a text, a module, a class.
bool namesAnotherSource(std::string_view interpreter, std::string_view option) {
    if (interpreter == "python") {
        return option == "-c" || option == "-m";
    }
    return option == "-c" || option == "-e" || option == "-cp" || option == "-classpath" || option == "--module";
}

bool takesValue(std::string_view interpreter, std::string_view option) {
    return interpreter == "python" && (option == "-W" || option == "-X");
}

} // namespace

std::optional<std::string> script(std::span<const std::string> words) {
    if (words.empty()) {
        return std::nullopt;
    }
    const std::string_view interpreter = withoutVersion(words.front());
    if (!isInterpreter(interpreter)) {
        return std::nullopt;
    }
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (interpreter == "java" && word == "-jar") {
            return i + 1 < words.size() ? words[i + 1] : "";
        }
        if (!word.starts_with('-')) {
            // A word without an option is a class.
            return interpreter == "java" ? "" : word;
        }
        if (namesAnotherSource(interpreter, word)) {
            return "";
        }
        if (takesValue(interpreter, word)) {
            ++i;
        }
    }
    return "";
}

std::optional<Program> program(const std::string& line) {
    const std::vector<std::string> all = words(line);
    const std::span<const std::string> command = behindEnvironment(all);
    if (command.empty()) {
        return std::nullopt;
    }
    const auto own = [](const std::string& word) { return !isFieldCode(word); };
    const auto count = std::ranges::count_if(command, own);
    const std::optional<std::string> file = script(command);
    if (!file || (file->empty() && command.size() == 1)) {
        return Program{.name = unescapedPercent(command.front()), .hasArguments = count > 1};
    }
    if (file->empty() || isFieldCode(*file)) {
        return std::nullopt;
    }
    return Program{.name = unescapedPercent(*file), .hasArguments = count > 2 && command.back() != *file};
}

std::string quoted(std::string_view word) {
    constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`=";
    std::string inner;
    for (const char c : word) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') {
            inner += '\\';
        }
        inner += c;
        if (c == '%') {
            inner += c;
        }
    }
    const bool needsQuotes = word.empty() || word.find_first_of(reserved) != std::string_view::npos;
    return needsQuotes ? "\"" + inner + "\"" : inner;
}

std::optional<std::string> locate(const std::string& program, std::string_view searchPath) {
    if (program.contains('/')) {
        return isExecutableFile(program) ? std::optional(program) : std::nullopt;
    }
    if (program.empty()) {
        return std::nullopt;
    }
    for (const auto part : std::views::split(searchPath, ':')) {
        const std::string_view folder(part.begin(), part.end());
        std::string path = std::string(folder).append("/").append(program);
        if (folder.starts_with('/') && isExecutableFile(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace platform::linux::ExecLine
