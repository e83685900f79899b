#include "Platform/Wayfire/Configuration.h"

#include "Platform/Linux/Applications/ProcessFacts.h"
#include "Platform/Linux/Files/RegularFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <ranges>
#include <utility>

namespace platform::wayfire {

namespace {

constexpr std::string_view lineBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(lineBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(lineBlanks) - first + 1);
}

std::vector<std::string> wordsOfFile(ProcessIdentifier process, const char* name) {
    constexpr std::size_t longest = std::size_t{256} << 10U;
    const std::string path =
        std::string(linux::ProcessFacts::standardFolder) + "/" + std::to_string(process) + "/" + name;
    const auto text = linux::readRegularFile(path, longest, linux::Excess::cutOff);
    return text ? linux::ProcessFacts::commandWords(*text) : std::vector<std::string>();
}

std::string variableOf(const CompositorProcess& compositor, std::string_view name) {
    for (const std::string& each : compositor.variables) {
        if (each.starts_with(name) && each.size() > name.size() && each[name.size()] == '=') {
            return each.substr(name.size() + 1);
        }
    }
    return {};
}

/// The value of an option, in any of the forms of getopt_long(3).
std::string optionOf(const CompositorProcess& compositor) {
    constexpr std::string_view brief = "-c";
    constexpr std::string_view whole = "--config";
    for (std::size_t place = 1; place < compositor.words.size(); ++place) {
        const std::string& word = compositor.words[place];
        if ((word == brief || word == whole) && place + 1 < compositor.words.size()) {
            return compositor.words[place + 1];
        }
        if (word.starts_with(std::string(whole) + "=")) {
            return word.substr(whole.size() + 1);
        }
        if (word.starts_with(brief) && word.size() > brief.size()) {
            return word.substr(brief.size());
        }
    }
    return {};
}

/// The value of the option "plugins" in the section "core". A line goes on after a backslash at its end.
std::optional<std::string> pluginsLine(std::string_view configuration) {
    std::string_view section;
    std::optional<std::string> plugins;
    bool goesOn = false;
    for (const auto part : std::views::split(configuration, '\n')) {
        std::string_view line = trimmed(std::string_view(part.begin(), part.end()));
        const std::size_t equals = line.find('=');
        bool isPlugins = goesOn;
        if (!goesOn && line.starts_with('[')) {
            section = trimmed(line.substr(1, line.find(']') - 1));
        } else if (!goesOn && section == "core" && trimmed(line.substr(0, equals)) == "plugins" &&
                   equals != std::string_view::npos) {
            // Of two lines, the later counts.
            plugins = "";
            line.remove_prefix(equals + 1);
            isPlugins = true;
        }
        goesOn = isPlugins && line.ends_with('\\');
        if (isPlugins) {
            line.remove_suffix(goesOn ? 1 : 0);
            plugins->append(line.substr(0, line.find('#'))).append(" ");
        }
    }
    return plugins;
}

} // namespace

CompositorProcess CompositorProcess::of(ProcessIdentifier process) {
    return {.words = wordsOfFile(process, "cmdline"), .variables = wordsOfFile(process, "environ")};
}

std::string configurationPath(const CompositorProcess& compositor,
                              const std::function<bool(const std::string& path)>& exists) {
    for (std::string named : {optionOf(compositor), variableOf(compositor, "WAYFIRE_CONFIG_FILE")}) {
        if (!named.empty()) {
            return named;
        }
    }
    std::string folder = variableOf(compositor, "XDG_CONFIG_HOME");
    const std::string home = variableOf(compositor, "HOME");
    if (folder.empty() && !home.empty()) {
        folder = home + "/.config";
    }
    if (folder.empty()) {
        return {};
    }
    const std::string inFolder = folder + "/wayfire/wayfire.ini";
    return exists(inFolder) ? inFolder : folder + "/wayfire.ini";
}

std::vector<std::string> missingPluginsIn(std::string_view configuration) {
    const std::string plugins = pluginsLine(configuration).value_or("command");
    std::vector<std::string> missing;
    for (const std::string_view needed : {"ipc", "ipc-rules", "command"}) {
        const bool isThere = std::ranges::any_of(std::views::split(plugins, ' '), [&](const auto part) {
            return trimmed(std::string_view(part.begin(), part.end())) == needed;
        });
        if (!isThere) {
            missing.emplace_back(needed);
        }
    }
    return missing;
}

} // namespace platform::wayfire
