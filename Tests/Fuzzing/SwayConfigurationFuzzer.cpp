#include "Platform/I3Ipc/Configuration.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// Treats the bytes as a configuration that includes itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const auto includes = [&](const std::string& pattern, const std::string& folder) {
        return std::vector<platform::i3ipc::ConfigurationFile>{{.path = folder + "/" + pattern, .text = text}};
    };
    const auto bound = platform::i3ipc::configuredBindings({.path = "/config", .text = text}, includes);
    for (const auto& [each, binding] : bound) {
        const auto& [modifiers, key, isNumber, group] = each.combination;
        if (key.empty() || platform::i3ipc::readCombination(key, isNumber).value().key != key || binding.line == 0) {
            std::abort();
        }
    }
    return 0;
}
