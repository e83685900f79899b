#pragma once

#include "FakeAccel.h"
#include "Platform/Linux/Bus/BusHandles.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A private KWin on a message bus: it accepts scripts, and simulates the started one. It has a thread of its own,
/// because its callers wait for it. It holds the hot keys, too, as KWin does.
class FakeKWin {
public:
    /// Simulates our script's visible behaviour. All on the fake's thread.
    class Script {
    public:
        explicit Script(FakeKWin& kwin, std::string run)
            : kwin(kwin)
            , run(std::move(run)) {}

        /// Calls Tell, and Next: `carryOut` gets the reply.
        void report(const std::string& news);
        void next(const std::string& results);

    private:
        static int answered(sd_bus_message* reply, void* data, sd_bus_error* error);

        FakeKWin& kwin;
        std::string run;
        std::vector<platform::linux::OwnedSlot> calls;
    };

    /// The script's actions at its start, and for each reply (a JSON text). The default ones open with `opened` and
    /// call, and report every command as done.
    std::function<void(Script&)> begin;
    std::function<void(Script&, const std::string& commands)> carryOut;
    /// The first message of the default script.
    std::string opened = R"({"opened":{"windows":[],"focused":"","screens":[)"
                         R"({"frame":[0,0,1600,900],"workArea":[0,30,1600,870]}]}})";
    /// Refuses to load scripts.
    std::atomic<bool> refusesScripts = false;
    /// Its KGlobalAccel.
    FakeAccel accel;

    /// Does not run yet.
    explicit FakeKWin(std::string address);
    FakeKWin(const FakeKWin&) = delete;
    FakeKWin& operator=(const FakeKWin&) = delete;
    ~FakeKWin();

    /// Returns when it owns its names.
    void start();
    void stop();

    /// Runs a function on the fake's thread, and returns when it is done.
    void run(const std::function<void()>& work);

    /// The running script; null without one. On the fake's thread.
    Script* script = nullptr;
    /// Reports the press of a key with this Qt number to its holder, if any, and its repeats and its release.
    void press(int key, int repeats = 0);
    /// Gives a key to another program as the system's settings do: it is first taken from all others, and a signal
    /// reports the change.
    void assignElsewhere(int key);
    /// Emits the signal that an action's keys were set.
    void reportChange(const FakeAccel::Action& action, const std::vector<std::int32_t>& keys);

    /// The requests, in order: "load", "start", "unload", "unregister …".
    [[nodiscard]] std::vector<std::string> history();
    /// The names of our actions, each with its key.
    [[nodiscard]] std::map<std::string, int> keys() { return accel.ownKeys(); }
    [[nodiscard]] bool isScriptLoaded();
    [[nodiscard]] std::string uniqueName();

private:
    static int called(sd_bus_message* call, void* data, sd_bus_error* error);
    static int accelCalled(sd_bus_message* call, void* data, sd_bus_error* error);

    void work();
    int answerScripting(sd_bus_message* call);
    void note(std::string what);

    std::string address;
    std::thread thread;
    std::mutex mutex;
    std::atomic<bool> isEnding = false;
    std::atomic<bool> hasNames = false;
    std::vector<std::function<void()>> errands;
    std::vector<std::string> noted;
    std::unique_ptr<Script> running;
    bool isLoaded = false;
    int runs = 0;
    sd_bus* bus = nullptr;
};
