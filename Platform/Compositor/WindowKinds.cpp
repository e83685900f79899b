#include "Platform/Compositor/WindowKinds.h"

namespace platform::compositor {

void WindowKinds::Reading::add(const WindowIdentifier& identifier, Window& window) {
    const ProcessIdentifier process = window.clues.process;
    if (const auto found = kinds.known.find(identifier); found != kinds.known.end()) {
        window.kind = found->second;
    } else if (!window.isTiled && processes.contains(process)) {
        window.kind = WindowKind::auxiliary;
    }
    if (process > 0) {
        processes.insert(process);
    }
    present.emplace(identifier, window.kind);
}

} // namespace platform::compositor
