#include "Platform/Linux/Processes/MemoryUse.h"

#include "Platform/Linux/Files/RegularFile.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string_view>
#include <system_error>

namespace platform::linux {
namespace {

/// The value of a line such as "VmRSS:      1234 kB", in bytes.
std::optional<std::uint64_t> bytes(std::string_view status, std::string_view key) {
    // With the line end in front, so that no other key can end the same way. The first line holds the program's name.
    const std::size_t start = status.find(key);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view line = status.substr(start + key.size());
    line = line.substr(0, line.find('\n'));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    constexpr std::uint64_t unit = 1024;
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    const std::string_view rest(end, line.data() + line.size());
    if (error != std::errc{} || rest != " kB" || number > std::numeric_limits<std::uint64_t>::max() / unit) {
        return std::nullopt;
    }
    return number * unit;
}

} // namespace

std::optional<MemoryUse> readMemoryUse(const std::string& path) {
    constexpr std::size_t enough = 65536;
    const std::optional<std::string> status = readRegularFile(path, enough, Excess::cutOff);
    if (!status) {
        return std::nullopt;
    }
    const std::optional<std::uint64_t> current = bytes(*status, "\nVmRSS:");
    const std::optional<std::uint64_t> peak = bytes(*status, "\nVmHWM:");
    if (!current || !peak) {
        return std::nullopt;
    }
    // The kernel updates the two at different moments.
    return MemoryUse{.current = *current, .peak = std::max(*current, *peak)};
}

} // namespace platform::linux
