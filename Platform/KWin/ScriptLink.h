#pragma once

#include "Platform/KWin/ScriptLoader.h"
#include "Platform/KWin/ScriptMessages.h"
#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/LaterWork.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace platform::kwin {

/// The connection to our script in KWin: loads the script, sends it commands and receives its reports. It loads the
/// script again after a timeout, or for another KWin.
///
/// No program can call KWin's scripts. Our script calls us and gets a reply when there is a command, at the latest
/// after `Timing::keepAlive`: KWin drops a call after 25 seconds, and with it the script. Only messages of the owner of
/// KWin's name count. Messages are queued while the bus is being read, and handled afterwards. Main thread only.
class ScriptLink final : private linux::SessionBus::Listener {
public:
    /// Receives the script's reports, in their order.
    class Receiver {
    public:
        Receiver() = default;
        Receiver(const Receiver&) = delete;
        Receiver& operator=(const Receiver&) = delete;
        virtual ~Receiver() = default;

        /// `ScriptMessages::Opened` comes first, and again after every reload of the script.
        virtual void scriptReported(ScriptMessages::News news) = 0;
        virtual void scriptCarriedOut(const ScriptMessages::Result& result) = 0;
        /// No more reports from KWin arrive until it is opened again.
        virtual void scriptLost() = 0;
    };

    struct Timing {
        /// How long a call of the script stays pending, and the leeway that joins wake-ups.
        Duration keepAlive = std::chrono::seconds(15);
        Duration keepAliveLeeway = std::chrono::seconds(4);
        /// The timeout for the script's next call. A quarter of it is left for reading the call.
        Duration patience = std::chrono::seconds(2);
        /// The timeout for the script's first report after it was loaded.
        Duration loading = std::chrono::seconds(10);
        /// The longest delay before a retry; the first retries come sooner. KWin takes its name before it accepts
        /// scripts.
        Duration retry = std::chrono::seconds(10);
        /// How long the end of this program waits for KWin.
        Duration farewell = std::chrono::milliseconds(500);
    };

    /// All arguments must outlive this. No other code may wait on this bus.
    ScriptLink(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, std::filesystem::path script,
               Receiver& receiver, Timing timing);
    /// Unloads the script from KWin.
    ~ScriptLink() override;

    /// Sends the script a command as soon as it calls. Does not wait.
    void ask(std::string command);

    /// Reads the bus, and no other source, until the condition holds; returns whether it does. Ends at the deadline.
    bool waitFor(const std::function<bool()>& condition, Instant deadline);

    /// Handles the messages that were read already.
    void actOnArrivals();

private:
    struct News {
        std::string run;
        ScriptMessages::News news;
    };

    struct Call {
        std::string run;
        std::vector<ScriptMessages::Result> results;
        linux::OwnedMessage message;
    };

    struct OwnerChanged {};

    struct LoadFailed {};

    using Arrival = std::variant<News, Call, OwnerChanged, LoadFailed>;

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    static int next(sd_bus_message* call, void* data, sd_bus_error* error);
    static int report(sd_bus_message* call, void* data, sd_bus_error* error);
    static int named(sd_bus_message* reply, void* data, sd_bus_error* error);

    void arrive(Arrival arrival);
    void act(News arrived);
    void act(Call arrived);
    void act(const OwnerChanged& arrived);
    void act(const LoadFailed& arrived);

    void claimName();
    void load();
    void loadLater(Duration delay);
    void retryLater();
    void lose();
    void answer(const std::vector<std::string>& given);
    /// Replies to the pending call, if there is one, so that the script ends.
    void dismiss();
    void awaitNextCall();
    void setAlarm(Duration delay, Duration leeway, MainActor::Work work);

    linux::MainLoop& mainLoop;
    Receiver& receiver;
    Timing timing;
    sd_bus* bus = nullptr;
    linux::NameOwner kwin;
    ScriptLoader loader;
    linux::OwnedSlot object;
    linux::OwnedSlot naming;
    bool hasName = false;
    std::deque<Arrival> arrivals;
    bool isTurnPosted = false;
    /// The name of the script's present run; messages of other runs are ignored. Empty without one.
    std::string run;
    /// The script's pending call.
    linux::OwnedMessage waiting;
    std::vector<std::string> commands;
    std::unique_ptr<ScheduledWork> alarm;
    unsigned failures = 0;
    linux::LaterWork later{mainLoop};
};

} // namespace platform::kwin
