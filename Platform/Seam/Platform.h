#pragma once

#include "Platform/Seam/Desktop/DesktopParts.h"

namespace corvid {
class PreferenceStore;
}

namespace platform {

class AddressOpener;
class ApplicationCatalogue;
class ImageRenderer;
class Localization;
class Log;
class LoginItemService;
class MainActor;
struct MainBundle;
class ProcessInfo;
class StatusBar;
class SystemClock;
class ThisApplication;

/// The table of operations that the logic works on. Its installer owns everything in it.
struct Platform {
    DesktopParts desktop;
    AddressOpener& addressOpener;
    ApplicationCatalogue& applicationCatalogue;
    /// Null while no toolkit is loaded that could draw.
    ImageRenderer* imageRenderer;
    Localization& localization;
    Log& log;
    LoginItemService& loginItemService;
    MainActor& mainActor;
    const MainBundle& mainBundle;
    ProcessInfo& processInfo;
    corvid::PreferenceStore& standardUserDefaults;
    StatusBar& statusBar;
    SystemClock& systemClock;
    ThisApplication& thisApplication;
};

/// The current table. A call before one is installed stops the process: it is a fault in the wiring.
[[nodiscard]] const Platform& current();

/// Makes a table the current one for its own lifetime, and restores the former one afterwards. `main` installs the
/// desktop's; a test installs its own. The table must outlive the installation.
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
