#include "Platform/Linux/Processes/ProgramOutput.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace platform::linux {

namespace {

/// Reaps an ended program without blocking: if the kernel has not released it yet, tries again.
void collectLater(MainLoop& mainLoop, pid_t process) {
    constexpr std::chrono::milliseconds interval{100};
    if (::waitpid(process, nullptr, WNOHANG) == 0) {
        mainLoop.runLater(mainLoop.now() + interval, interval,
                          [&mainLoop, process] { collectLater(mainLoop, process); });
    }
}

} // namespace

std::unique_ptr<ProgramOutput> ProgramOutput::of(MainLoop& mainLoop, const std::string& program,
                                                 const std::vector<std::string>& arguments, Done done,
                                                 Duration patience) {
    std::optional<PrintingProgram> started = startPrinting(program, arguments);
    return started ? std::make_unique<ProgramOutput>(mainLoop, *std::move(started), std::move(done), patience)
                   : nullptr;
}

ProgramOutput::ProgramOutput(MainLoop& mainLoop, PrintingProgram started, Done done, Duration patience)
    : mainLoop(mainLoop)
    , pipe(std::move(started.output))
    , process(started.process)
    , done(std::move(done))
    , deadline(mainLoop.schedule(mainLoop.now() + patience, patience / 10, [this] { finish(std::nullopt); }))
    , watch(mainLoop.watch(pipe.get(), [] { return false; }, [this] { read(); })) {
}

ProgramOutput::~ProgramOutput() {
    stop();
}

void ProgramOutput::stop() {
    if (const pid_t running = std::exchange(process, 0); running > 0) {
        ::kill(running, SIGKILL);
        collectLater(mainLoop, running);
    }
}

void ProgramOutput::read() {
    std::array<char, 16384> part{};
    const ssize_t length = ::read(pipe.get(), part.data(), part.size());
    if (length > 0) {
        text.append(part.data(), static_cast<std::size_t>(length));
    } else if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if ((length > 0 && text.size() <= most) || end) {
        return;
    }
    // Not within the watch's own call, which is dropped now. The pipe stays readable until then.
    end = mainLoop.schedule(mainLoop.now(), {}, [this, isWhole = length == 0] {
        watch.reset();
        if (!isWhole) {
            finish(std::nullopt);
            return;
        }
        exit = ProcessExit::watch(mainLoop, process, [this] { collect(); });
        if (!exit) {
            finish(std::nullopt);
        }
    });
}

void ProgramOutput::collect() {
    int status = 0;
    const bool hasEnded = ::waitpid(process, &status, WNOHANG) == process;
    process = hasEnded ? 0 : process;
    const bool isGood = hasEnded && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    finish(isGood ? std::optional(std::move(text)) : std::nullopt);
}

void ProgramOutput::finish(std::optional<std::string> printed) {
    stop();
    deadline.reset();
    end.reset();
    exit.reset();
    watch.reset();
    // The callback may drop this.
    const Done reply = std::move(done);
    const std::optional<std::string> given = std::move(printed);
    reply(given);
}

} // namespace platform::linux
