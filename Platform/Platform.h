#pragma once

namespace corvid {
class PreferenceStore;
}

namespace platform {

class Accessibility;
class Beep;
class HotKeyEvents;
class MainActor;
class ProcessInfo;
class Screens;
class Workspace;

/// The table of operations that the logic works on. Everything in it is owned by whoever installed it.
struct Platform {
    Accessibility& accessibility;
    Beep& sound;
    HotKeyEvents& hotKeyEvents;
    MainActor& mainActor;
    ProcessInfo& processInfo;
    Screens& screens;
    corvid::PreferenceStore& standardUserDefaults;
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
