#include "Platform/Linux/Applications/ProcessFacts.h"

#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/KeyFile.h"
#include "Platform/Linux/Files/RegularFile.h"

#include <unistd.h>

#include <array>
#include <charconv>
#include <climits>
#include <cstddef>
#include <ranges>
#include <system_error>
#include <utility>

namespace platform::linux::ProcessFacts {
namespace {

constexpr std::size_t enough = 16384;

std::string fileOf(const std::string& folder, ProcessIdentifier process, std::string_view name) {
    return folder + "/" + std::to_string(process) + "/" + std::string(name);
}

std::optional<std::string> readFact(const std::string& folder, ProcessIdentifier process, std::string_view name) {
    return process > 0 ? readRegularFile(fileOf(folder, process, name), enough, Excess::cutOff) : std::nullopt;
}

std::optional<std::string> linkTarget(const std::string& path) {
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
    return length > 0 ? std::optional(std::string(buffer.data(), static_cast<std::size_t>(length))) : std::nullopt;
}

/// "a-b" for "a\x2db".
std::string unescaped(std::string_view part) {
    constexpr std::size_t escapeLength = 4;
    constexpr int hexadecimal = 16;
    std::string result;
    while (!part.empty()) {
        unsigned char byte = 0;
        const std::string_view digits = part.starts_with("\\x") ? part.substr(2, 2) : "";
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, hexadecimal);
        const bool isEscape = digits.size() == 2 && error == std::errc{} && end == digits.data() + digits.size();
        result += isEscape ? static_cast<char>(byte) : part.front();
        part.remove_prefix(isEscape ? escapeLength : 1);
    }
    return result;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (const auto part : std::views::split(text, separator)) {
        parts.emplace_back(part.begin(), part.end());
    }
    return parts;
}

std::optional<std::string> applicationOfUnitName(std::string_view unit) {
    constexpr std::string_view scope = ".scope";
    constexpr std::string_view service = ".service";
    const bool isScope = unit.ends_with(scope);
    if (!isScope && !unit.ends_with(service)) {
        return std::nullopt;
    }
    unit.remove_suffix(isScope ? scope.size() : service.size());
    if (!isScope) {
        unit = unit.substr(0, unit.find('@'));
    }
    // A "-" within a part is escaped.
    std::vector<std::string_view> parts = split(unit, '-');
    if (isScope && !parts.empty()) {
        parts.pop_back();
    }
    constexpr std::size_t withoutLauncher = 2;
    constexpr std::size_t withLauncher = 3;
    if (parts.size() < withoutLauncher || parts.size() > withLauncher || parts.front() != "app" ||
        parts.back().empty()) {
        return std::nullopt;
    }
    return unescaped(parts.back());
}

} // namespace

std::optional<std::string> flatpakApplication(const std::string& folder, ProcessIdentifier process) {
    // A link there is none of Flatpak's making, and would lead through our own root rather than the process's.
    constexpr std::string_view name = "root/.flatpak-info";
    if (process <= 0 || linkTarget(fileOf(folder, process, name))) {
        return std::nullopt;
    }
    const std::optional<std::string> contents = readFact(folder, process, name);
    const std::optional<KeyFile> file = contents ? KeyFile::parse(*contents) : std::nullopt;
    std::optional<std::string> application = file ? file->text("Application", "name") : std::nullopt;
    return application && !application->empty() ? application : std::nullopt;
}

std::optional<SnapApplication> snapOfLabel(std::string_view label) {
    constexpr std::string_view prefix = "snap.";
    if (!label.starts_with(prefix)) {
        return std::nullopt;
    }
    label.remove_prefix(prefix.size());
    // Behind the label: the mode in brackets; or "//" and the name of a part with rules of its own.
    constexpr std::string_view ends(" /\n\0", 4);
    label = label.substr(0, label.find_first_of(ends));
    const std::size_t dot = label.find('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == label.size()) {
        return std::nullopt;
    }
    return SnapApplication{.instance = std::string(label.substr(0, dot)),
                           .application = std::string(label.substr(dot + 1))};
}

std::optional<SnapApplication> snapApplication(const std::string& folder, ProcessIdentifier process) {
    // The older file belongs to the security module that came first, so the module's own file is read before it.
    for (const std::string_view name : {"attr/apparmor/current", "attr/current"}) {
        const std::optional<std::string> label = readFact(folder, process, name);
        if (std::optional<SnapApplication> snap = snapOfLabel(label.value_or(""))) {
            return snap;
        }
    }
    return std::nullopt;
}

std::optional<std::string> scopeApplication(const std::string& folder, ProcessIdentifier process) {
    return applicationOfUnit(readFact(folder, process, "cgroup").value_or(""));
}

std::optional<std::string> applicationOfUnit(std::string_view controlGroups) {
    for (const std::string_view line : split(controlGroups, '\n')) {
        // The unified hierarchy, or systemd's own among the older ones (cgroups(7)).
        if (!line.starts_with("0::") && !line.contains(":name=systemd:")) {
            continue;
        }
        bool isInUserManager = false;
        for (const std::string_view unit : split(line.substr(line.rfind(':') + 1), '/')) {
            if (std::optional<std::string> application = isInUserManager ? applicationOfUnitName(unit) : std::nullopt) {
                return application;
            }
            isInUserManager = isInUserManager || (unit.starts_with("user@") && unit.ends_with(".service"));
        }
    }
    return std::nullopt;
}

std::optional<Program> program(const std::string& folder, ProcessIdentifier process) {
    std::optional<std::string> path = process > 0 ? linkTarget(fileOf(folder, process, "exe")) : std::nullopt;
    if (!path || !path->starts_with('/')) {
        return std::nullopt;
    }
    // The kernel's note that the file has been replaced since, as by an upgrade.
    constexpr std::string_view deleted = " (deleted)";
    if (path->ends_with(deleted)) {
        path->resize(path->size() - deleted.size());
    }
    std::vector<std::string> words = commandWords(readFact(folder, process, "cmdline").value_or(""));
    // A process can choose its own name; the kernel knows the program.
    if (words.empty()) {
        words.emplace_back();
    }
    words.front() = *path;
    std::optional<std::string> script = ExecLine::script(words);
    if (script && !script->empty()) {
        return Program{.path = "", .script = std::move(*script)};
    }
    return Program{.path = std::move(*path), .script = ""};
}

std::vector<std::string> commandWords(std::string_view commandLine) {
    if (commandLine.ends_with('\0')) {
        commandLine.remove_suffix(1);
    }
    if (commandLine.empty()) {
        return {};
    }
    const std::vector<std::string_view> words = split(commandLine, '\0');
    return {words.begin(), words.end()};
}

} // namespace platform::linux::ProcessFacts
