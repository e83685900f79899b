#include "CorvidKit/AccessibilityAccess.h"

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Platform.h"

namespace corvid::AccessibilityAccess {

bool isTrusted() {
    return platform::current().desktop.accessibility.isProcessTrusted();
}

std::optional<platform::AccessObstacle> obstacle() {
    return platform::current().desktop.accessibility.obstacle();
}

bool requestIfNeeded() {
    return platform::current().desktop.accessibility.isProcessTrustedWithPrompt();
}

} // namespace corvid::AccessibilityAccess
