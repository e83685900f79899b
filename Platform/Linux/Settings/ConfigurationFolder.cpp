#include "Platform/Linux/Settings/ConfigurationFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace platform::linux {
namespace {

std::optional<std::string> absolutePath(const char* variable) {
    // The environment stays as it was at the start.
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe)
    if (value == nullptr || !std::string_view{value}.starts_with('/')) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::string> homeOfPasswordEntry() {
    constexpr std::size_t enough = 16384;
    std::vector<char> buffer(enough);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr ||
        found->pw_dir == nullptr || !std::string_view{found->pw_dir}.starts_with('/')) {
        return std::nullopt;
    }
    return found->pw_dir;
}

} // namespace

std::optional<std::string> homeFolder() {
    const std::optional<std::string> home = absolutePath("HOME");
    return home ? home : homeOfPasswordEntry();
}

std::optional<std::string> configurationFolder() {
    if (std::optional<std::string> folder = absolutePath("XDG_CONFIG_HOME")) {
        return folder;
    }
    const std::optional<std::string> home = homeFolder();
    return home ? std::optional{*home + "/.config"} : std::nullopt;
}

} // namespace platform::linux
