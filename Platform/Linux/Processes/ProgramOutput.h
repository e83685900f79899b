#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Processes/ProcessExit.h"
#include "Platform/Linux/Processes/ProgramStart.h"

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// A program that is run for its output (see `startPrinting`). Nothing waits for it. Dropping it ends the program;
/// `Done` is not called then. Main thread only.
class ProgramOutput {
public:
    /// A program that takes longer is ended.
    static constexpr std::chrono::seconds usualPatience{5};
    /// One that prints more is ended.
    static constexpr std::size_t most = std::size_t{1} << 20U;

    /// Called once, in a turn of the loop, with the program's standard output; empty if it failed, took too long or
    /// printed too much. May destroy this.
    using Done = std::function<void(const std::optional<std::string>& printed)>;

    /// Null where it cannot be started. The loop must outlive this.
    [[nodiscard]] static std::unique_ptr<ProgramOutput> of(MainLoop& mainLoop, const std::string& program,
                                                           const std::vector<std::string>& arguments, Done done,
                                                           Duration patience = usualPatience);

    ProgramOutput(MainLoop& mainLoop, PrintingProgram started, Done done, Duration patience);
    ProgramOutput(const ProgramOutput&) = delete;
    ProgramOutput& operator=(const ProgramOutput&) = delete;
    ~ProgramOutput();

private:
    void read();
    void collect();
    void stop();
    void finish(std::optional<std::string> printed);

    MainLoop& mainLoop;
    FileDescriptor pipe;
    /// Zero once it is waited for.
    pid_t process;
    Done done;
    std::string text;
    std::unique_ptr<ProcessExit> exit;
    std::unique_ptr<ScheduledWork> deadline;
    std::unique_ptr<ScheduledWork> end;
    std::unique_ptr<DescriptorWatch> watch;
};

} // namespace platform::linux
