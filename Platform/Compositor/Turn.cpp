#include "Platform/Compositor/Turn.h"

namespace platform::compositor {

const WindowTable* Turn::table() {
    if (!isRead && windows.isOpen()) {
        isRead = true;
        door.refresh(deadline());
    }
    return windows.isOpen() ? &windows : nullptr;
}

Instant Turn::deadline() {
    if (!end) {
        end = mainActor.now() + patience;
    }
    return *end;
}

} // namespace platform::compositor
