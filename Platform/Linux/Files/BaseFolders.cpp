#include "Platform/Linux/Files/BaseFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <ranges>
#include <utility>

namespace platform::linux {
namespace {

std::string withoutSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) {
        path.remove_suffix(1);
    }
    return std::string(path);
}

/// Paths that are not absolute do not count.
void append(std::vector<std::string>& folders, std::string_view given) {
    std::string path = withoutSlashes(given);
    if (path.starts_with('/') && std::ranges::find(folders, path) == folders.end()) {
        folders.push_back(std::move(path));
    }
}

std::vector<std::string> listed(const std::optional<std::string>& value, std::string_view standard) {
    // An empty variable counts as unset.
    std::vector<std::string> folders;
    for (const std::string& part : partsBetweenColons(value && !value->empty() ? *value : standard)) {
        append(folders, part);
    }
    return folders;
}

std::optional<std::string> inHome(const std::optional<std::string>& value, const std::optional<std::string>& home,
                                  std::string_view standard) {
    if (value && value->starts_with('/')) {
        return withoutSlashes(*value);
    }
    return home ? std::optional(*home + std::string(standard)) : std::nullopt;
}

std::optional<std::string> homeFolder() {
    if (auto home = environmentVariable("HOME"); home && home->starts_with('/')) {
        return home;
    }
    constexpr std::size_t enough = 16384;
    std::vector<char> buffer(enough);
    passwd entry{};
    passwd* found = nullptr;
    const bool isKnown = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
                         found != nullptr && found->pw_dir != nullptr;
    return isKnown ? std::optional<std::string>(found->pw_dir) : std::nullopt;
}

} // namespace

BaseFolders BaseFolders::of(const Variables& variables) {
    BaseFolders folders;
    if (variables.home && variables.home->starts_with('/')) {
        folders.home = withoutSlashes(*variables.home);
    }
    const std::optional<std::string> dataHome = inHome(variables.dataHome, folders.home, "/.local/share");
    append(folders.data, dataHome.value_or(""));
    for (const std::string& folder : listed(variables.dataFolders, "/usr/local/share:/usr/share")) {
        append(folders.data, folder);
    }
    append(folders.data, dataHome ? *dataHome + "/flatpak/exports/share" : "");
    append(folders.data, "/var/lib/flatpak/exports/share");
    append(folders.data, "/var/lib/snapd/desktop");
    folders.userConfiguration = inHome(variables.configurationHome, folders.home, "/.config");
    folders.systemConfiguration = listed(variables.configurationFolders, "/etc/xdg");
    folders.userState = inHome(variables.stateHome, folders.home, "/.local/state");
    return folders;
}

BaseFolders BaseFolders::ofThisProcess() {
    return of({
        .home = homeFolder(),
        .dataHome = environmentVariable("XDG_DATA_HOME"),
        .dataFolders = environmentVariable("XDG_DATA_DIRS"),
        .configurationHome = environmentVariable("XDG_CONFIG_HOME"),
        .configurationFolders = environmentVariable("XDG_CONFIG_DIRS"),
        .stateHome = environmentVariable("XDG_STATE_HOME"),
    });
}

std::vector<std::string> BaseFolders::applications() const {
    std::vector<std::string> folders;
    for (const std::string& folder : data) {
        append(folders, folder + "/applications");
    }
    return folders;
}

std::string runtimeFolder() {
    const std::string named = environmentVariable("XDG_RUNTIME_DIR").value_or("");
    return named.empty() ? "/run/user/" + std::to_string(::getuid()) : named;
}

std::vector<std::string> currentDesktops() {
    return partsBetweenColons(environmentVariable("XDG_CURRENT_DESKTOP").value_or(""));
}

std::string programSearchPath() {
    return environmentVariable("PATH").value_or("/usr/local/bin:/usr/bin:/bin");
}

std::vector<std::string> partsBetweenColons(std::string_view text) {
    std::vector<std::string> parts;
    for (const auto part : std::views::split(text, ':')) {
        if (!part.empty()) {
            parts.emplace_back(part.begin(), part.end());
        }
    }
    return parts;
}

std::optional<std::string> environmentVariable(const char* name) {
    // The environment stays as it was at the start.
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace platform::linux
