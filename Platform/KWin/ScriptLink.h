#pragma once

#include "Platform/KWin/ScriptLoader.h"
#include "Platform/KWin/ScriptMessages.h"
#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/LaterWork.h"
#include "Platform/Linux/MainLoop.h"

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

/// The line to our script in KWin: loads the script, hands it commands and takes what it tells, and loads it again when
/// it fell silent or KWin is another.
///
/// KWin's scripts cannot be called. Ours calls us and is answered when there is something to do, at the latest after
/// `Timing::keepAlive`: KWin gives a call up after 25 seconds, and the script with it. Only the owner of KWin's name is
/// listened to. What arrives is read and queued while the bus is being read, and acted on afterwards. Main thread only.
class ScriptLink final : private linux::SessionBus::Listener {
public:
    /// Told of what the script says, in its order.
    class Receiver {
    public:
        Receiver() = default;
        Receiver(const Receiver&) = delete;
        Receiver& operator=(const Receiver&) = delete;
        virtual ~Receiver() = default;

        /// `ScriptMessages::Opened` comes first, and again whenever the script was loaded again.
        virtual void scriptTold(ScriptMessages::News news) = 0;
        virtual void scriptCarriedOut(const ScriptMessages::Result& result) = 0;
        /// Nothing is heard of KWin any more, until it is opened again.
        virtual void scriptLost() = 0;
    };

    struct Timing {
        /// How long a call of the script is left waiting, and the leeway that joins wake-ups.
        Duration keepAlive = std::chrono::seconds(15);
        Duration keepAliveLeeway = std::chrono::seconds(4);
        /// How long the script takes at most until it calls again. A quarter of that is left for reading its call.
        Duration patience = std::chrono::seconds(2);
        /// How long the script takes at most to tell how things are, after it was to be loaded.
        Duration loading = std::chrono::seconds(10);
        /// When to try again what failed, at most; the first times sooner. KWin takes its name before it takes scripts.
        Duration retry = std::chrono::seconds(10);
        /// How long the end of this program waits for KWin.
        Duration farewell = std::chrono::milliseconds(500);
    };

    /// Everything has to outlive this. Nobody else may use the bus for anything that waits.
    ScriptLink(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, std::filesystem::path script,
               Receiver& receiver, Timing timing);
    /// Takes the script out of KWin.
    ~ScriptLink() override;

    /// Hands the script a command as soon as it calls. Does not wait.
    void ask(std::string command);

    /// Reads the bus, and only that, until the condition holds; gives whether it does. Ends at the deadline.
    bool waitFor(const std::function<bool()>& condition, Instant deadline);

    /// Acts on what was read already.
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
    static int tell(sd_bus_message* call, void* data, sd_bus_error* error);
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
    /// Answers the call that waits, if there is one, so that the script ends.
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
    /// Names the run of the script that is listened to; empty while there is none.
    std::string run;
    /// The script's call that was not answered yet.
    linux::OwnedMessage waiting;
    std::vector<std::string> commands;
    std::unique_ptr<ScheduledWork> alarm;
    unsigned failures = 0;
    linux::LaterWork later{mainLoop};
};

} // namespace platform::kwin
