#include "FakeKWin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <utility>

using platform::linux::CloseBus;
using platform::linux::OwnedBus;
using platform::linux::OwnedMessage;
using platform::linux::OwnedSlot;

namespace {

constexpr const char* ours = "org.corvid.Tessel.KWin";
constexpr const char* ourPath = "/org/corvid/Tessel/KWin";
constexpr const char* ourInterface = "org.corvid.Tessel.KWin1";

/// The interval in microseconds at which the thread checks for a posted function.
constexpr std::uint64_t errandInterval = 1000;

} // namespace

void FakeKWin::Script::report(const std::string& news) {
    ASSERT_GE(sd_bus_call_method_async(
                  kwin.bus, nullptr, ours, ourPath, ourInterface, "Report",
                  [](sd_bus_message*, void*, sd_bus_error*) { return 0; }, nullptr, "ss", run.c_str(), news.c_str()),
              0);
}

void FakeKWin::Script::next(const std::string& results) {
    sd_bus_slot* slot = nullptr;
    ASSERT_GE(sd_bus_call_method_async(kwin.bus, &slot, ours, ourPath, ourInterface, "Next", &Script::answered, this,
                                       "ss", run.c_str(), results.c_str()),
              0);
    calls.emplace_back(slot);
}

int FakeKWin::Script::answered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<Script*>(data);
    const char* commands = nullptr;
    // KWin reports no errors to a script.
    if (sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "s", &commands) > 0) {
        self.kwin.note(std::string("answer ") + commands);
        if (std::string(commands) != "\"end\"") {
            self.kwin.carryOut(self, commands);
        }
    }
    return 0;
}

FakeKWin::FakeKWin(std::string address)
    : address(std::move(address)) {
    begin = [this](Script& started) {
        started.report(opened);
        started.next("[]");
    };
    carryOut = [](Script& started, const std::string& /*commands*/) { started.next("[]"); };
}

FakeKWin::~FakeKWin() {
    stop();
}

void FakeKWin::start() {
    isEnding = false;
    hasNames = false;
    thread = std::thread([this] { work(); });
    while (!hasNames) {
        std::this_thread::yield();
    }
}

void FakeKWin::stop() {
    isEnding = true;
    if (thread.joinable()) {
        thread.join();
    }
}

void FakeKWin::run(const std::function<void()>& work) {
    std::mutex done;
    std::condition_variable report;
    bool isDone = false;
    {
        const std::scoped_lock lock(mutex);
        errands.emplace_back([&] {
            work();
            const std::scoped_lock finished(done);
            isDone = true;
            report.notify_one();
        });
    }
    std::unique_lock lock(done);
    ASSERT_TRUE(report.wait_for(lock, std::chrono::seconds(10), [&] { return isDone; }));
}

void FakeKWin::work() {
    sd_bus* raw = nullptr;
    sd_bus_new(&raw);
    const OwnedBus owned(raw);
    bus = raw;
    const bool isReady =
        sd_bus_set_address(raw, address.c_str()) >= 0 && sd_bus_set_bus_client(raw, 1) >= 0 && sd_bus_start(raw) >= 0 &&
        sd_bus_add_object(raw, nullptr, "/Scripting", &FakeKWin::called, this) >= 0 &&
        sd_bus_add_fallback(raw, nullptr, "/", &FakeKWin::accelCalled, this) >= 0 &&
        sd_bus_request_name(raw, "org.kde.kglobalaccel", 0) >= 0 && sd_bus_request_name(raw, "org.kde.KWin", 0) >= 0;
    EXPECT_TRUE(isReady);
    hasNames = true;
    while (!isEnding) {
        std::vector<std::function<void()>> present;
        {
            const std::scoped_lock lock(mutex);
            present = std::exchange(errands, {});
        }
        for (const auto& errand : present) {
            errand();
        }
        const int processed = sd_bus_process(raw, nullptr);
        if (processed < 0 || (processed == 0 && sd_bus_wait(raw, errandInterval) < 0)) {
            break;
        }
    }
    // On return the bus has handled this. A call that reaches a closing connection gets the same reply as after a
    // timeout.
    sd_bus_release_name(raw, "org.kde.kglobalaccel");
    sd_bus_release_name(raw, "org.kde.KWin");
    script = nullptr;
    running.reset();
    bus = nullptr;
}

int FakeKWin::called(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    return static_cast<FakeKWin*>(data)->answerScripting(call);
}

int FakeKWin::answerScripting(sd_bus_message* call) {
    const std::string method = sd_bus_message_get_member(call);
    if (method == "unloadScript") {
        note("unload");
        const bool was = std::exchange(isLoaded, false);
        script = nullptr;
        running.reset();
        return sd_bus_reply_method_return(call, "b", static_cast<int>(was));
    }
    if (method == "loadScript") {
        const char* file = nullptr;
        const char* name = nullptr;
        EXPECT_GT(sd_bus_message_read(call, "ss", &file, &name), 0);
        note(std::string("load ") + file + " as " + name);
        const bool isTaken = !refusesScripts && !std::exchange(isLoaded, true);
        return sd_bus_reply_method_return(call, "i", isTaken ? 0 : -1);
    }
    EXPECT_EQ(method, "start");
    note("start");
    if (isLoaded && !running) {
        running = std::make_unique<Script>(*this, "run-" + std::to_string(++runs));
        script = running.get();
        begin(*running);
    }
    return sd_bus_reply_method_return(call, nullptr);
}

int FakeKWin::accelCalled(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<FakeKWin*>(data);
    return self.accel.answer(call, [&](std::string what) { self.note(std::move(what)); });
}

void FakeKWin::assignElsewhere(int key) {
    const FakeAccel::Action other{"org.example.Other", "theirs", "Another program", "Theirs"};
    for (const auto& [action, own] : keys()) {
        if (own == key) {
            accel.hold({"org.corvid.Tessel", action, "Tessel", "Ours"}, std::vector<std::int32_t>{});
        }
    }
    accel.hold(other, {0x1c000041, key});
    reportChange(other, {0x1c000041, key});
}

void FakeKWin::reportChange(const FakeAccel::Action& action, const std::vector<std::int32_t>& keys) {
    run([&] { signalChange(bus, action, alone(keys)); });
}

void FakeKWin::press(int key, int repeats) {
    run([&] {
        for (const auto& [action, held] : keys()) {
            const bool isOurs = held == key && accel.recipient(key) == "org.corvid.Tessel";
            for (int count = 0; isOurs && count <= repeats + 1; ++count) {
                const char* signal = count <= repeats ? "globalShortcutPressed" : "globalShortcutReleased";
                sd_bus_emit_signal(bus, "/component/org_corvid_Tessel", "org.kde.kglobalaccel.Component", signal, "ssx",
                                   "org.corvid.Tessel", action.c_str(), std::int64_t{0});
            }
        }
    });
}

void FakeKWin::note(std::string what) {
    const std::scoped_lock lock(mutex);
    noted.push_back(std::move(what));
}

std::vector<std::string> FakeKWin::history() {
    const std::scoped_lock lock(mutex);
    return noted;
}

bool FakeKWin::isScriptLoaded() {
    bool result = false;
    run([&] { result = isLoaded; });
    return result;
}

std::string FakeKWin::uniqueName() {
    std::string name;
    run([&] {
        const char* unique = nullptr;
        sd_bus_get_unique_name(bus, &unique);
        name = unique;
    });
    return name;
}
