#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <sys/inotify.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// Watches folders and their subfolders (see `FolderTree`) for changes to files with a certain ending, through inotify.
/// For a missing folder it watches the nearest existing one above it. Main thread; must not outlive the loop.
class FolderWatch {
public:
    /// Changes within `coalescing` of the first are reported by one call of `changed`, in a turn of the event loop of
    /// its own. `changed` may ask for `takeChange`; it must not drop the watch.
    FolderWatch(MainLoop& loop, std::vector<std::string> folders, std::string ending, Duration coalescing,
                std::function<void()> changed);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    /// Whether anything has changed since this was last asked (or since the watch was made), up to this very moment.
    [[nodiscard]] bool takeChange();

    /// Whether every folder is watched; the kernel allows a user only so many.
    [[nodiscard]] bool isComplete() const { return isEveryFolderWatched; }

private:
    /// The names that matter in a watched folder; none: all that have the ending, and all folders.
    using AwaitedNames = std::vector<std::string>;

    void renewWatches();
    void watchTree(const std::string& folder, std::map<int, AwaitedNames>& renewed);
    void awaitFolder(const std::string& folder, std::map<int, AwaitedNames>& renewed);
    int addWatch(const std::string& folder, std::uint32_t events);
    void readEvents();
    [[nodiscard]] bool matters(const inotify_event& event, std::string_view name) const;
    void notifyLater();

    MainLoop& loop;
    std::vector<std::string> folders;
    std::string ending;
    Duration coalescing;
    std::function<void()> changed;
    FileDescriptor inotify;
    std::map<int, AwaitedNames> watches;
    bool isEveryFolderWatched = false;
    bool hasChanged = false;
    std::unique_ptr<ScheduledWork> notice;
    std::unique_ptr<DescriptorWatch> readable;
};

} // namespace platform::linux
