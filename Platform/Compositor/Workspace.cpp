#include "Platform/Compositor/Workspace.h"

namespace platform::compositor {

std::optional<ProcessIdentifier> Workspace::frontmostApplication() {
    const WindowTable* table = turn.table();
    if (table == nullptr || !table->focused()) {
        return std::nullopt;
    }
    const Window* focused = table->find(*table->focused());
    return focused == nullptr ? std::nullopt : std::optional(focused->clues.process);
}

} // namespace platform::compositor
