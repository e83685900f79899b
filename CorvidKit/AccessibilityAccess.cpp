#include "CorvidKit/AccessibilityAccess.h"

#include "Platform/Accessibility.h"
#include "Platform/Platform.h"

namespace corvid::AccessibilityAccess {

bool isTrusted() {
    return platform::current().accessibility.isProcessTrusted();
}

std::optional<platform::AccessObstacle> obstacle() {
    return platform::current().accessibility.obstacle();
}

bool requestIfNeeded() {
    return platform::current().accessibility.isProcessTrustedWithPrompt();
}

} // namespace corvid::AccessibilityAccess
