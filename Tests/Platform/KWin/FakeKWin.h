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

/// A KWin of a test's own on a message bus: takes scripts, and plays the one that it was told to start. In a thread of
/// its own, for whoever asks it waits. It holds the hot keys, too, as KWin does.
class FakeKWin {
public:
    /// Plays our script as far as it can be seen from outside. All on the fake's thread.
    class Script {
    public:
        explicit Script(FakeKWin& kwin, std::string run)
            : kwin(kwin)
            , run(std::move(run)) {}

        /// Calls Tell, and Next: the answer is given to `carryOut`.
        void tell(const std::string& news);
        void next(const std::string& results);

    private:
        static int answered(sd_bus_message* reply, void* data, sd_bus_error* error);

        FakeKWin& kwin;
        std::string run;
        std::vector<platform::linux::OwnedSlot> calls;
    };

    /// What the script does as it starts, and with each answer (a JSON text). The usual ones open with `opened` and
    /// call, and report every command as done.
    std::function<void(Script&)> begin;
    std::function<void(Script&, const std::string& commands)> carryOut;
    /// Told first by the usual script.
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

    /// Runs something on the fake's thread, and returns when it has.
    void run(const std::function<void()>& work);

    /// The script that runs; null while none does. On the fake's thread.
    Script* script = nullptr;
    /// Tells of the press of a key with this Qt number, if somebody has it, of its repeats and of its release.
    void press(int key, int repeats = 0);
    /// Gives a key to another program, as the system's settings do, which take it from everybody else before; and
    /// tells everybody.
    void assignElsewhere(int key);
    /// Tells everybody that the keys of an action were set.
    void tellOfChange(const FakeAccel::Action& action, const std::vector<std::int32_t>& keys);

    /// What it was asked for, in order: "load", "start", "unload", "unregister …".
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
