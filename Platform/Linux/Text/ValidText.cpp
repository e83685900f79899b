#include "Platform/Linux/Text/ValidText.h"

#include "Platform/Linux/Applications/GLibMemory.h"

namespace platform::linux {

std::string validText(std::string_view text) {
    // An empty view may have no address at all, which GLib does not take.
    return text.empty() ? std::string()
                        : GLibText(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()))).get();
}

} // namespace platform::linux
