#include "Platform/ShellCore/Messages.h"
#include "Tests/Fuzzing/Requirements.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using namespace platform;

void requireSound(const compositor::WindowIdentifier& identifier, const compositor::Window& window) {
    constexpr std::size_t longestText = 1024;
    require(!identifier.empty() && window.clues.process >= 0);
    require(window.clues.applicationId.size() <= longestText && window.clues.windowClass.size() <= longestText);
    requireWithin(window.frame);
}

} // namespace

/// Treats the bytes as each of the messages in turn: every value read from them is within bounds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    if (const auto hello = shellcore::parseHello(text)) {
        for (const auto& [identifier, window] : hello->contents.windows) {
            requireSound(identifier, window);
        }
    }
    if (const auto window = shellcore::parseWindow(text)) {
        requireSound(window->first, window->second);
    }
    if (const auto outputs = shellcore::parseOutputs(text)) {
        for (const compositor::Output& output : *outputs) {
            requireWithin(output.frame);
            requireWithin(output.workArea);
        }
    }
    if (const auto frames = shellcore::parseFrames(text)) {
        for (const auto& each : *frames) {
            requireWithin(each.frame);
        }
    }
    return 0;
}
