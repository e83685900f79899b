#pragma once

namespace corvid {
class PreferenceStore;
}

namespace platform {

class Accessibility;
class AccessibilityObservers;
class AddressOpener;
class ApplicationCatalogue;
class Beep;
class HotKeyEvents;
class ImageRenderer;
class Localization;
class Log;
class LoginItemService;
class MainActor;
struct MainBundle;
class ProcessInfo;
class RunningApplications;
class Screens;
class ShortcutHolders;
class StatusBar;
class SystemClock;
class ThisApplication;
class Workspace;

/// The table of operations that the logic works on. Everything in it is owned by whoever installed it.
struct Platform {
    Accessibility& accessibility;
    AccessibilityObservers& accessibilityObservers;
    AddressOpener& addressOpener;
    ApplicationCatalogue& applicationCatalogue;
    Beep& sound;
    HotKeyEvents& hotKeyEvents;
    /// Null while nothing is loaded that could draw.
    ImageRenderer* imageRenderer;
    Localization& localization;
    Log& log;
    LoginItemService& loginItemService;
    MainActor& mainActor;
    const MainBundle& mainBundle;
    ProcessInfo& processInfo;
    RunningApplications& runningApplications;
    Screens& screens;
    /// Null where nobody can say who holds a shortcut.
    ShortcutHolders* shortcutHolders;
    corvid::PreferenceStore& standardUserDefaults;
    StatusBar& statusBar;
    SystemClock& systemClock;
    ThisApplication& thisApplication;
    Workspace& workspace;
};

/// The table in force. Asking for it before one is installed stops the process: it is a fault in the wiring.
[[nodiscard]] const Platform& current();

/// Puts a table in force for as long as it lives and the one before it back afterwards. `main` installs the desktop's;
/// a test installs its own. The table must outlive the installation.
class Installation {
public:
    explicit Installation(const Platform& table);
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    ~Installation();

private:
    const Platform* previous;
};

} // namespace platform
