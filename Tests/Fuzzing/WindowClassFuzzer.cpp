#include "Platform/X11/ApplicationClues.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Treats the bytes as WM_CLASS, and their halves as the two properties that name an application.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace platform::x11;
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const WindowClass parsed = parseWindowClass(text);
    const std::string id = namedApplicationId(text.substr(0, size / 2), text.substr(size / 2));
    const auto isSound = [&](std::string_view part) { return part.size() <= size && !part.contains('\0'); };
    const std::string whole = parsed.instance + '\0' + parsed.className + '\0';
    if (!isSound(parsed.instance) || !isSound(parsed.className) || !isSound(id) || parseWindowClass(whole) != parsed) {
        std::abort();
    }
    return 0;
}
