#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace platform::linux {

/// The path of this program's file. An upgrade may have put another file there since the start. Absolute; empty if the
/// kernel does not report it (/proc/self/exe, proc_pid_exe(5)). Any thread.
[[nodiscard]] std::optional<std::string> programPath();

/// This program's own file, which the kernel keeps as long as it runs, open for reading. Any thread.
[[nodiscard]] FileDescriptor openProgram();

/// Notices when this program's file is replaced. Main thread; must not outlive the loop.
class ProgramFile {
public:
    explicit ProgramFile(MainLoop& mainLoop);
    ProgramFile(const ProgramFile&) = delete;
    ProgramFile& operator=(const ProgramFile&) = delete;
    ~ProgramFile();

    /// Whether another build is in the place of the one that runs. One that was only removed, or installed once more,
    /// is not replaced.
    [[nodiscard]] bool isReplaced() const;

    /// Calls `handler` in a turn of its own when that may have changed. One handler.
    void onChange(std::function<void()> handler) { changed = std::move(handler); }

private:
    void watch() const;
    void readEvents();

    FileDescriptor inotify;
    std::unique_ptr<DescriptorWatch> readable;
    std::function<void()> changed;
};

} // namespace platform::linux
