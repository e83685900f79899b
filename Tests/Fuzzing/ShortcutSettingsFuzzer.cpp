#include "Platform/Linux/Holders/OpenboxBindings.h"
#include "Platform/Linux/Holders/SettingLines.h"
#include "Platform/Linux/Holders/XfceHolders.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// Treats the bytes as the file or output in which each desktop stores its shortcuts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace platform::linux;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    constexpr corvid::Shortcut shortcut{.keyCode = 123, .modifiers = 0x1800};
    for (const OpenboxBinding& binding : readOpenboxBindings(text)) {
        if (binding.keys.key.empty()) {
            std::abort();
        }
    }
    for (const SettingLine& setting : readSettingLines(text)) {
        if (setting.schema.empty() || setting.key.empty()) {
            std::abort();
        }
        for (const std::string& accelerator : setting.texts()) {
            static_cast<void>(readAccelerator(accelerator));
        }
    }
    if (const auto holder = xfceHolder(text, shortcut); holder && holder->heldBy.empty()) {
        std::abort();
    }
    return 0;
}
