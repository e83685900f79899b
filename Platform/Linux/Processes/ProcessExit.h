#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <functional>
#include <memory>

namespace platform::linux {

/// The exit of another process, reported by the kernel (pidfd_open(2)): there is no polling, and a later process with
/// the same number is not mistaken for it. Holds one descriptor. Main thread only.
class ProcessExit {
public:
    /// Calls `ended` once, in a turn of the event loop, when the process has ended; it may drop the watch. Null where
    /// the process cannot be watched: it does not exist (any more) or not for us, the kernel is too old, or there are
    /// no descriptors left.
    [[nodiscard]] static std::unique_ptr<ProcessExit> watch(MainLoop& mainLoop, ProcessIdentifier process,
                                                            std::function<void()> ended);

    ProcessExit(MainLoop& mainLoop, FileDescriptor opened, std::function<void()> ended);
    ProcessExit(const ProcessExit&) = delete;
    ProcessExit& operator=(const ProcessExit&) = delete;
    ~ProcessExit() = default;

    /// Whether the process has ended, reported or not.
    [[nodiscard]] bool hasHappened() const;

private:
    void reportEnd();

    FileDescriptor process;
    std::function<void()> ended;
    std::unique_ptr<DescriptorWatch> descriptorWatch;
};

} // namespace platform::linux
