#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/MainLoop.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::kwin {

/// An action in KGlobalAccel, by the four texts that name it there. UTF-8.
struct AccelAction {
    /// The program, and the program's name for people.
    std::string component;
    std::string action;
    std::string componentTitle;
    std::string actionTitle;

    friend bool operator==(const AccelAction&, const AccelAction&) = default;
};

/// Up to four of Qt's keys in a row (`QKeySequence`); behind the last one, zeros.
using KeySequence = std::array<std::int32_t, 4>;
using KeySequences = std::vector<KeySequence>;

/// The sequence of a key alone.
[[nodiscard]] constexpr KeySequence sequenceOf(std::int32_t key) {
    return {key, 0, 0, 0};
}

/// Asks KGlobalAccel (org.kde.kglobalaccel, as in KDE's kglobalaccel, org.kde.KGlobalAccel.xml), which is part of KWin
/// on Wayland and a program of its own on X11. Never starts it: while KWin is away, another one would come between it
/// and its keys. Main thread only.
class GlobalAccel {
public:
    /// Under this the program stands in the system's settings.
    static constexpr const char* ownComponent = "org.corvid.Tessel";
    static constexpr const char* name = "org.kde.kglobalaccel";
    static constexpr const char* path = "/kglobalaccel";
    static constexpr const char* interface = "org.kde.KGlobalAccel";
    static constexpr const char* componentInterface = "org.kde.kglobalaccel.Component";

    /// All that is waited for in one turn of the loop takes at most this.
    static constexpr std::chrono::milliseconds turnTime{250};

    /// It was not there, did not answer in time, or refused.
    struct NoAnswer {};

    template <typename Value>
    using Answer = std::expected<Value, NoAnswer>;

    /// `timedOut` is called when a question is not answered in time; it must not ask.
    explicit GlobalAccel(
        linux::MainLoop& mainLoop, std::function<void()> timedOut = [] {})
        : mainLoop(mainLoop)
        , timedOut(std::move(timedOut)) {}

    /// The connection to ask on from now on; null for none.
    void use(sd_bus* connection) { bus = connection; }

    /// Begins a turn's time anew, for the last questions of a program that ends. A timeout is not reported any more.
    void beginLastTurn() {
        turnEnd = mainLoop.now() + turnTime;
        timedOut = [] {};
    }

    /// Does what takes time of its own, which is not counted as waiting.
    void withoutCounting(const std::function<void()>& work);

    /// A signal that was sent before the last change of somebody else's keys was made here: it tells of that change, or
    /// of nothing that was not known when it was made.
    [[nodiscard]] bool isOlderThanOwnChange(sd_bus_message* signal) const;

    /// Makes an action of ours known, and asks for a key. Gives whether it was granted; that of Plasma 6.7 grants a key
    /// that another action has.
    [[nodiscard]] Answer<bool> registerKey(const AccelAction& action, std::int32_t key);

    /// Gives back an action of ours and its key. Waits for nothing.
    void unregister(const std::string& action);

    /// The names of our own actions; empty where there are none.
    [[nodiscard]] std::vector<std::string> ownActions();

    /// Takes what has no key out of the settings. Answered when all that was given back before is free.
    void cleanUp();

    /// The action that gets the presses of a key: of those that share it, the one that was registered first.
    [[nodiscard]] Answer<std::optional<AccelAction>> recipient(std::int32_t key);

    /// All keys of an action, as the user has set them; empty for an action that is not known.
    [[nodiscard]] Answer<KeySequences> keysOf(const AccelAction& action);

    /// Changes the keys of somebody else's action, as the system's settings do, and lastingly. A key that a third has
    /// is left out, except by that of Plasma 6.7.
    [[nodiscard]] Answer<void> setKeysOf(const AccelAction& action, const KeySequences& keys);

private:
    /// A question about an action; null without a bus.
    [[nodiscard]] linux::OwnedMessage about(const AccelAction& action, const char* method) const;
    /// Waits for the answer; null without one.
    [[nodiscard]] linux::OwnedMessage answerTo(const linux::OwnedMessage& question);
    [[nodiscard]] Duration patience();

    linux::MainLoop& mainLoop;
    std::function<void()> timedOut;
    sd_bus* bus = nullptr;
    /// When the waiting of this turn of the loop is over.
    std::optional<Instant> turnEnd;
    /// The sender of the reply to our last change of another program's keys, and the serial of that reply.
    std::string changedBy;
    std::uint64_t changedAt = 0;
    std::shared_ptr<GlobalAccel*> self = std::make_shared<GlobalAccel*>(this);
};

/// The question for a key's recipient, to be asked without waiting; null without a bus. `readAction` reads the answer.
[[nodiscard]] linux::OwnedMessage newRecipientCall(sd_bus* bus, std::int32_t key);

/// The four texts that name an action; nothing where they are not there.
[[nodiscard]] std::optional<AccelAction> readAction(sd_bus_message* message);
/// The lists of keys at the message's present place.
[[nodiscard]] KeySequences readKeys(sd_bus_message* message);

} // namespace platform::kwin
