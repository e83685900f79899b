#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace platform::wayfire {

/// Notices changes of Wayfire's configuration file, also when an editor replaces it (inotify(7)). Main thread; must not
/// outlive the loop.
class ConfigurationWatch {
public:
    /// Wayfire reads the file itself up to half a second after a change (0.10, "workarounds/config_reload_delay").
    static constexpr std::chrono::milliseconds delay{1000};

    /// `changed` is called in a turn of its own, `delay` after the last change; it must not drop this.
    ConfigurationWatch(linux::MainLoop& mainLoop, const std::string& path, std::function<void()> changed);

private:
    void readEvents();

    linux::MainLoop& mainLoop;
    std::string file;
    std::function<void()> changed;
    linux::FileDescriptor inotify;
    std::unique_ptr<linux::DescriptorWatch> readable;
    std::unique_ptr<ScheduledWork> notification;
};

} // namespace platform::wayfire
