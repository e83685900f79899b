#include "Platform/Compositor/Turn.h"

namespace platform::compositor {

const WindowTable* Turn::table() {
    if (!isRead && windows.isOpen()) {
        isRead = true;
        access.refresh(limit.end());
    }
    return windows.isOpen() ? &windows : nullptr;
}

} // namespace platform::compositor
