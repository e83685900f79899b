#include "Platform/KWin/ScriptMessages.h"
#include "Tests/Fuzzing/Requirements.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

namespace {

using namespace platform;
namespace messages = kwin::ScriptMessages;

void requireSound(const compositor::WindowIdentifier& identifier, const compositor::Window& window) {
    require(!identifier.empty() && window.clues.process >= 0);
    require(!window.clues.applicationId.contains('\0') && !window.clues.windowClass.contains('\0'));
    requireWithin(window.frame);
}

} // namespace

/// Treats the bytes as events and as results: every value read from them is within bounds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    if (const auto news = messages::readNews(text)) {
        if (const auto* opened = std::get_if<messages::Opened>(&*news)) {
            for (const auto& [identifier, window] : opened->windows) {
                requireSound(identifier, window);
            }
        }
        if (const auto* reported = std::get_if<messages::WindowReport>(&*news)) {
            requireSound(reported->identifier, reported->window);
        }
        if (const auto* screens = std::get_if<messages::Screens>(&*news)) {
            for (const compositor::Output& output : screens->outputs) {
                requireWithin(output.frame);
                requireWithin(output.workArea);
            }
        }
    }
    if (const auto results = messages::readResults(text)) {
        for (const messages::Result& result : *results) {
            requireWithin(result.frame.value_or(corvid::CGRect{}));
            requireWithin(result.asked.value_or(corvid::CGRect{}));
        }
    }
    return 0;
}
