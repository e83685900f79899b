#pragma once

namespace platform {

class Accessibility;
class AccessibilityObservers;
class Beep;
class HotKeyEvents;
class OwnWindows;
class RunningApplications;
class Screens;
class ShortcutHolders;
class Workspace;

/// The parts that every kind of desktop has. The desktop owns them.
struct DesktopParts {
    Accessibility& accessibility;
    AccessibilityObservers& accessibilityObservers;
    Beep& sound;
    HotKeyEvents& hotKeyEvents;
    OwnWindows& ownWindows;
    RunningApplications& runningApplications;
    Screens& screens;
    /// The source of the holders of shortcuts that were refused. Null where there is none.
    ShortcutHolders* shortcutHolders;
    Workspace& workspace;
};

} // namespace platform
