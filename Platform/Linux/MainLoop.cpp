#include "Platform/Linux/MainLoop.h"

#include "Platform/Linux/Log.h"

#include <sys/epoll.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

namespace platform::linux {

namespace {

using Microseconds = std::chrono::duration<std::uint64_t, std::micro>;

/// The program cannot run without an event loop; the log is all that is left.
void require(int result, const char* what) {
    if (result < 0) {
        const std::string reason = std::generic_category().message(-result);
        logToStandardError(std::string(what) + ": " + reason);
        std::abort();
    }
}

/// Whether this process was started to survive the hang-up of its terminal or session (nohup).
bool ignoresHangUp() {
    struct sigaction action{};
    return sigaction(SIGHUP, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

class MainLoop::Timer final : public ScheduledWork {
public:
    Timer(sd_event* loop, Instant deadline, Duration tolerance, Work work)
        : work(std::move(work)) {
        const auto time = std::chrono::ceil<Microseconds>(std::max(deadline.time_since_epoch(), Duration::zero()));
        // An accuracy of zero means the library's default, a quarter of a second.
        const auto accuracy = std::max(std::chrono::floor<Microseconds>(tolerance), Microseconds{1});
        sd_event_source* raw = nullptr;
        require(sd_event_add_time(loop, &raw, CLOCK_BOOTTIME, time.count(), accuracy.count(), &Timer::fire, this),
                "cannot set a timer");
        source.reset(raw);
    }

    /// Gives the timer to the loop, which drops it once it has run or when the loop itself goes.
    static void leaveToLoop(std::unique_ptr<Timer> timer) {
        Timer* left = timer.release();
        left->isLoops = true;
        sd_event_source* kept = left->source.release();
        sd_event_source_set_floating(kept, 1);
        sd_event_source_set_destroy_callback(kept, [](void* data) { delete static_cast<Timer*>(data); });
        sd_event_source_unref(kept);
    }

private:
    static int fire(sd_event_source* source, std::uint64_t /*time*/, void* data) {
        // Taken out first: the work may drop this timer, unless it is the loop's. A source that was dropped is out of
        // the loop, and later versions of the library end the process that asks anything of it.
        auto* timer = static_cast<Timer*>(data);
        const bool isLoops = timer->isLoops;
        Work work = std::move(timer->work);
        work();
        if (isLoops) {
            // Ends the loop's own reference.
            sd_event_source_set_floating(source, 0);
        }
        return 0;
    }

    Work work;
    bool isLoops = false;
    Source source;
};

void MainLoop::Soon::arm() {
    if (isArmed) {
        return;
    }
    const auto run = [](sd_event_source* /*source*/, void* data) {
        auto* soon = static_cast<Soon*>(data);
        soon->isArmed = false;
        soon->work();
        return 0;
    };
    // Made anew each time: the loop serves the source that has waited longest, and this kind counts from its creation.
    // An old one would always come first.
    sd_event_source* raw = nullptr;
    require(sd_event_add_defer(loop, &raw, run, this), "cannot use the event loop");
    source.reset(raw);
    isArmed = true;
}

class MainLoop::Watch final : public DescriptorWatch {
public:
    Watch(sd_event* loop, int descriptor, std::function<bool()> prepareFunction, std::function<void()> serveFunction)
        : prepare(std::move(prepareFunction))
        , serve(std::move(serveFunction))
        , pending(loop, [this] { serve(); }) {
        sd_event_source* raw = nullptr;
        require(sd_event_add_io(loop, &raw, descriptor, EPOLLIN, &Watch::readable, this), "cannot watch a descriptor");
        readableSource.reset(raw);
        require(sd_event_source_set_prepare(raw, &Watch::beforeWaiting), "cannot watch a descriptor");
    }

private:
    static int readable(sd_event_source* /*source*/, int /*descriptor*/, std::uint32_t /*events*/, void* data) {
        static_cast<Watch*>(data)->serve();
        return 0;
    }

    static int beforeWaiting(sd_event_source* /*source*/, void* data) {
        auto* watch = static_cast<Watch*>(data);
        if (watch->prepare()) {
            watch->pending.arm();
        }
        return 0;
    }

    std::function<bool()> prepare;
    std::function<void()> serve;
    Source readableSource;
    Soon pending;
};

/// A timer that never fires: a source without anything to listen to, for the sake of the loop's preparations.
class MainLoop::EndlessTimer final : public TurnEnd {
public:
    EndlessTimer(sd_event* loop, std::int64_t priority, std::function<void()> workFunction)
        : work(std::move(workFunction)) {
        const auto nothing = [](sd_event_source* /*source*/, std::uint64_t /*time*/, void* /*data*/) { return 0; };
        sd_event_source* raw = nullptr;
        require(
            sd_event_add_time(loop, &raw, CLOCK_BOOTTIME, std::numeric_limits<std::uint64_t>::max(), 0, nothing, this),
            "cannot use the event loop");
        source.reset(raw);
        require(sd_event_source_set_priority(raw, priority), "cannot use the event loop");
        require(sd_event_source_set_prepare(raw, &EndlessTimer::beforeWaiting), "cannot use the event loop");
    }

private:
    static int beforeWaiting(sd_event_source* /*source*/, void* data) {
        static_cast<EndlessTimer*>(data)->work();
        return 0;
    }

    std::function<void()> work;
    Source source;
};

MainLoop::MainLoop() {
    sd_event* rawLoop = nullptr;
    require(sd_event_new(&rawLoop), "cannot make an event loop");
    loop.reset(rawLoop);
    // The first timer takes a descriptor, which the loop keeps. Once all are in use it could not have one.
    [[maybe_unused]] const Timer first(rawLoop, {}, {}, [] {});
    // The library prepares the sources of a turn in the order of their priorities.
    deadlineRenewal =
        std::make_unique<EndlessTimer>(rawLoop, std::numeric_limits<std::int64_t>::max(), [this] { limit.begin(); });
    turnOfPosted = std::make_unique<Soon>(rawLoop, [this] { runPosted(); });
}

MainLoop::~MainLoop() = default;

int MainLoop::run() {
    constexpr std::uint64_t forever = std::numeric_limits<std::uint64_t>::max();
    while (!isFinished()) {
        if (const auto host = std::exchange(next, nullptr)) {
            host();
        } else if (sd_event_run(loop.get(), forever) < 0) {
            return EXIT_FAILURE;
        }
    }
    int status = EXIT_FAILURE;
    return sd_event_get_exit_code(loop.get(), &status) < 0 ? EXIT_FAILURE : status;
}

int MainLoop::descriptor() const {
    return sd_event_get_fd(loop.get());
}

HostedLoop::Outlook MainLoop::serve() {
    if (isServing) {
        return Outlook::idle;
    }
    isServing = true;
    // The outer loop gets its turn, however much there is to serve here.
    constexpr int mostAtOnce = 64;
    auto outlook = Outlook::unfinished;
    for (int turn = 0; turn < mostAtOnce && outlook == Outlook::unfinished; ++turn) {
        if (isFinished() || sd_event_run(loop.get(), 0) <= 0) {
            outlook = Outlook::idle;
        }
    }
    isServing = false;
    return isFinished() ? Outlook::ended : outlook;
}

bool MainLoop::isFinished() const {
    return sd_event_get_state(loop.get()) == SD_EVENT_FINISHED;
}

void MainLoop::end(int status) {
    int given = 0;
    if (sd_event_get_exit_code(loop.get(), &given) < 0) {
        sd_event_exit(loop.get(), status);
    }
}

void MainLoop::endOnTerminationSignals() {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        if (signal == SIGHUP && ignoresHangUp()) {
            continue;
        }
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, signal);
        sigprocmask(SIG_BLOCK, &blocked, nullptr);
        // Without a handler of ours the library ends the loop with the number given here.
        require(sd_event_add_signal(loop.get(), nullptr, signal, nullptr, nullptr), "cannot listen to signals");
    }
}

std::unique_ptr<DescriptorWatch> MainLoop::watch(int descriptor, std::function<bool()> prepare,
                                                 std::function<void()> serve) {
    return std::make_unique<Watch>(loop.get(), descriptor, std::move(prepare), std::move(serve));
}

std::unique_ptr<TurnEnd> MainLoop::atEndOfTurn(std::function<void()> work) {
    return std::make_unique<EndlessTimer>(loop.get(), SD_EVENT_PRIORITY_NORMAL, std::move(work));
}

bool MainLoop::isCurrent() const {
    return std::this_thread::get_id() == mainThread;
}

Instant MainLoop::now() const {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return Instant(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

void MainLoop::post(Work work) {
    posted.push_back(std::move(work));
    turnOfPosted->arm();
}

std::unique_ptr<ScheduledWork> MainLoop::schedule(Instant deadline, Duration tolerance, Work work) {
    return std::make_unique<Timer>(loop.get(), deadline, tolerance, std::move(work));
}

void MainLoop::runLater(Instant deadline, Duration tolerance, Work work) {
    Timer::leaveToLoop(std::make_unique<Timer>(loop.get(), deadline, tolerance, std::move(work)));
}

void MainLoop::runPosted() {
    // Work that is posted meanwhile belongs to the next turn.
    std::deque<Work> present = std::exchange(posted, {});
    while (!present.empty()) {
        Work work = std::move(present.front());
        present.pop_front();
        work();
        if (limit.hasBegun()) {
            break;
        }
    }
    if (!present.empty()) {
        // The work waited and used up time of this turn. Each of the others gets the whole time of its own turn.
        posted.insert(posted.begin(), std::move_iterator(present.begin()), std::move_iterator(present.end()));
        turnOfPosted->arm();
    }
}

} // namespace platform::linux
