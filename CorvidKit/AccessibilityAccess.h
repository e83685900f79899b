#pragma once

#include "Platform/AccessObstacle.h"

#include <optional>

/// Whether the desktop lets this program move other applications' windows. Every call asks afresh.
namespace corvid::AccessibilityAccess {

/// Whether it does. Never shows anything.
[[nodiscard]] bool isTrusted();

/// The reason why it does not; nothing where it does. Never shows anything.
[[nodiscard]] std::optional<platform::AccessObstacle> obstacle();

/// The same; where it does not, the desktop itself shows the user how to allow it.
bool requestIfNeeded();

} // namespace corvid::AccessibilityAccess
