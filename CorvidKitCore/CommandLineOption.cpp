#include "CorvidKitCore/CommandLineOption.h"

#include <algorithm>
#include <iterator>

namespace corvid::CommandLineOption {

std::optional<std::string> value(std::string_view option, std::span<const std::string> arguments) {
    const auto match = std::ranges::find(arguments, option);
    if (match == arguments.end() || std::next(match) == arguments.end()) {
        return std::nullopt;
    }
    return *std::next(match);
}

} // namespace corvid::CommandLineOption
