#include "Platform/I3Ipc/LineHolder.h"

#include <string>

namespace platform::i3ipc {

ShortcutHolder lineHolder(std::string_view program, const ConfiguredBinding& binding, std::string_view home) {
    std::string path = binding.path;
    if (!home.empty() && path.starts_with(std::string(home) + "/")) {
        path = "~" + path.substr(home.size());
    }
    std::string heldBy(program);
    // The compositor may not have reported the file.
    if (!path.empty()) {
        heldBy += ", " + path + ":" + std::to_string(binding.line);
    }
    return {.heldBy = std::move(heldBy), .purpose = binding.command};
}

} // namespace platform::i3ipc
