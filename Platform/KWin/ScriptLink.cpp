#include "Platform/KWin/ScriptLink.h"

#include "Platform/KWin/BusWait.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace platform::kwin {

namespace {

// The methods that Resources/kwin/tessel.js calls.
constexpr const char* serviceName = "org.corvid.Tessel.KWin";
constexpr const char* objectPath = "/org/corvid/Tessel/KWin";
constexpr const char* interfaceName = "org.corvid.Tessel.KWin1";

/// A script that queues more than this in one turn is broken: reload it.
constexpr std::size_t mostArrivals = 20'000;

constexpr std::chrono::milliseconds patienceLeeway{10};
constexpr std::chrono::milliseconds soonestRetry{100};

} // namespace

ScriptLink::ScriptLink(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, std::filesystem::path script,
                       Receiver& receiver, Timing timing)
    : Listener(sessionBus)
    , mainLoop(mainLoop)
    , receiver(receiver)
    , timing(timing)
    , kwin(ScriptLoader::kwinName, [this] { arrive(OwnerChanged()); })
    , loader(std::move(script), [this] { arrive(LoadFailed()); }) {
}

ScriptLink::~ScriptLink() {
    if (bus == nullptr || kwin.owner().empty() || !hasName) {
        return;
    }
    dismiss();
    loader.unload(bus, timing.farewell);
}

void ScriptLink::busArrived(sd_bus* arrived) {
    static constexpr std::uint64_t flags = SD_BUS_VTABLE_UNPRIVILEGED;
    static constexpr std::array<sd_bus_vtable, 4> methods{
        {SD_BUS_VTABLE_START(0), SD_BUS_METHOD("Next", "ss", "s", &ScriptLink::next, flags),
         SD_BUS_METHOD("Report", "ss", "", &ScriptLink::report, flags), SD_BUS_VTABLE_END}};
    bus = arrived;
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus, &slot, objectPath, interfaceName, methods.data(), this);
    object.reset(slot);
    kwin.follow(bus);
    claimName();
}

void ScriptLink::busLeft() {
    bus = nullptr;
    hasName = false;
    object.reset();
    naming.reset();
    loader.abandon();
    kwin.forget();
    arrivals.clear();
    arrive(OwnerChanged());
}

void ScriptLink::claimName() {
    sd_bus_slot* slot = nullptr;
    sd_bus_request_name_async(bus, &slot, serviceName, 0, &ScriptLink::named, this);
    naming.reset(slot);
}

int ScriptLink::named(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<ScriptLink*>(data);
    constexpr std::uint32_t isOwner = 1;
    std::uint32_t outcome = 0;
    self.hasName = sd_bus_message_is_method_error(reply, nullptr) == 0 &&
                   sd_bus_message_read(reply, "u", &outcome) > 0 && outcome == isOwner;
    self.arrive(OwnerChanged());
    return 0;
}

int ScriptLink::next(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<ScriptLink*>(data);
    const char* run = nullptr;
    const char* text = nullptr;
    if (!self.kwin.sent(call) || sd_bus_message_read(call, "ss", &run, &text) <= 0) {
        return -EACCES;
    }
    auto results = ScriptMessages::readResults(text);
    if (!results) {
        return -EINVAL;
    }
    self.arrive(
        Call{.run = run, .results = *std::move(results), .message = linux::OwnedMessage(sd_bus_message_ref(call))});
    return 1;
}

int ScriptLink::report(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<ScriptLink*>(data);
    const char* run = nullptr;
    const char* text = nullptr;
    if (!self.kwin.sent(call) || sd_bus_message_read(call, "ss", &run, &text) <= 0) {
        return -EACCES;
    }
    auto news = ScriptMessages::readNews(text);
    if (!news) {
        return -EINVAL;
    }
    self.arrive(News{.run = run, .news = *std::move(news)});
    return sd_bus_reply_method_return(call, nullptr);
}

void ScriptLink::arrive(Arrival arrival) {
    if (arrivals.size() >= mostArrivals) {
        // A dropped event would be missing for good.
        arrivals.clear();
        arrivals.emplace_back(LoadFailed());
    }
    arrivals.push_back(std::move(arrival));
    if (!isTurnPosted) {
        isTurnPosted = true;
        later.post([this] {
            isTurnPosted = false;
            actOnArrivals();
        });
    }
}

void ScriptLink::actOnArrivals() {
    while (!arrivals.empty()) {
        Arrival arrival = std::move(arrivals.front());
        arrivals.pop_front();
        std::visit([this](auto& arrived) { act(std::move(arrived)); }, arrival);
    }
}

void ScriptLink::act(News arrived) {
    if (std::holds_alternative<ScriptMessages::Opened>(arrived.news)) {
        dismiss();
        run = arrived.run;
        failures = 0;
        commands.clear();
        awaitNextCall();
    }
    if (!run.empty() && arrived.run == run) {
        receiver.scriptReported(std::move(arrived.news));
    }
}

void ScriptLink::act(Call arrived) {
    if (run.empty() || arrived.run != run) {
        // A reply to an earlier command, or to one that was given up.
        sd_bus_reply_method_return(arrived.message.get(), "s", ScriptMessages::end().c_str());
        return;
    }
    dismiss();
    waiting = std::move(arrived.message);
    for (const ScriptMessages::Result& result : arrived.results) {
        receiver.scriptCarriedOut(result);
    }
    if (!commands.empty()) {
        answer(std::exchange(commands, {}));
    } else {
        setAlarm(timing.keepAlive, timing.keepAliveLeeway, [this] { answer({}); });
    }
}

void ScriptLink::act(const OwnerChanged& /*arrived*/) {
    lose();
    load();
}

void ScriptLink::act(const LoadFailed& /*arrived*/) {
    lose();
    retryLater();
}

void ScriptLink::load() {
    if (bus == nullptr || kwin.owner().empty()) {
        // KWin or the bus is missing; both report when they are back.
        return;
    }
    if (!hasName) {
        retryLater();
        return;
    }
    loader.load(bus);
    loadLater(timing.loading);
}

void ScriptLink::retryLater() {
    // Further ones would leave the number's range; the delay is at its limit before.
    constexpr unsigned mostDoublings = 8;
    const Duration delay = soonestRetry * (1U << std::min(failures++, mostDoublings));
    loadLater(std::min(delay, timing.retry));
}

void ScriptLink::loadLater(Duration delay) {
    setAlarm(delay, delay / 10, [this] {
        if (bus != nullptr && !hasName) {
            claimName();
        } else {
            load();
        }
    });
}

void ScriptLink::lose() {
    alarm.reset();
    dismiss();
    commands.clear();
    if (!std::exchange(run, {}).empty()) {
        receiver.scriptLost();
    }
}

void ScriptLink::ask(std::string command) {
    commands.push_back(std::move(command));
    if (waiting) {
        answer(std::exchange(commands, {}));
    }
}

void ScriptLink::answer(const std::vector<std::string>& given) {
    if (waiting) {
        sd_bus_reply_method_return(waiting.get(), "s", ScriptMessages::answer(given).c_str());
        waiting.reset();
    }
    awaitNextCall();
}

void ScriptLink::dismiss() {
    if (const linux::OwnedMessage call = std::exchange(waiting, nullptr)) {
        sd_bus_reply_method_return(call.get(), "s", ScriptMessages::end().c_str());
    }
}

void ScriptLink::awaitNextCall() {
    setAlarm(timing.patience, patienceLeeway, [this] {
        // The call may be unread if this program itself was delayed. The loop reads it before the next timeout.
        setAlarm(timing.patience / 4, patienceLeeway, [this] {
            // A call that was read but not yet handled counts as well.
            actOnArrivals();
            if (!waiting && !run.empty()) {
                lose();
                load();
            }
        });
    });
}

void ScriptLink::setAlarm(Duration delay, Duration leeway, MainActor::Work work) {
    // When the program ends, its windows may still send commands.
    if (sd_event_get_state(mainLoop.handle()) != SD_EVENT_FINISHED) {
        alarm = mainLoop.schedule(mainLoop.now() + delay, leeway, std::move(work));
    }
}

bool ScriptLink::waitFor(const std::function<bool()>& condition, Instant deadline) {
    const auto isReached = [&] {
        actOnArrivals();
        return condition();
    };
    return waitOnBus(bus, mainLoop, isReached, deadline);
}

} // namespace platform::kwin
