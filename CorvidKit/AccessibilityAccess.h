#pragma once

/// Whether the desktop lets this program move other applications' windows. Every call asks afresh.
namespace corvid::AccessibilityAccess {

/// Whether it does. Never shows anything.
[[nodiscard]] bool isTrusted();

/// The same; where it does not, the desktop itself shows the user how to allow it.
bool requestIfNeeded();

} // namespace corvid::AccessibilityAccess
