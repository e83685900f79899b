#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <array>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::kwin {

/// An action in KGlobalAccel, by its four names there. UTF-8.
struct AccelAction {
    /// The program's identifier, and its name for people.
    std::string component;
    std::string action;
    std::string componentTitle;
    std::string actionTitle;

    friend bool operator==(const AccelAction&, const AccelAction&) = default;
};

/// A sequence of up to four of Qt's keys (`QKeySequence`), filled up with zeros.
using KeySequence = std::array<std::int32_t, 4>;
using KeySequences = std::vector<KeySequence>;

/// The sequence of a single key.
[[nodiscard]] constexpr KeySequence sequenceOf(std::int32_t key) {
    return {key, 0, 0, 0};
}

/// Calls KGlobalAccel (org.kde.kglobalaccel, as in KDE's kglobalaccel, org.kde.KGlobalAccel.xml), which is part of KWin
/// on Wayland and a program of its own on X11. Never starts it: while KWin is away, another instance would take KWin's
/// keys. Main thread only.
class GlobalAccel {
public:
    /// The program's name in the system's settings.
    static constexpr const char* ownComponent = "org.corvid.Tessel";
    static constexpr const char* name = "org.kde.kglobalaccel";
    static constexpr const char* path = "/kglobalaccel";
    static constexpr const char* interface = "org.kde.KGlobalAccel";
    static constexpr const char* componentInterface = "org.kde.kglobalaccel.Component";

    /// It was not there, did not answer in time, or refused.
    struct NoAnswer {};

    template <typename Value>
    using Answer = std::expected<Value, NoAnswer>;

    /// `timedOut` is called when a question is not answered in time; it must not ask.
    explicit GlobalAccel(
        linux::MainLoop& mainLoop, std::function<void()> timedOut = [] {})
        : mainLoop(mainLoop)
        , timedOut(std::move(timedOut)) {}

    /// The connection for all further calls; null for none.
    void use(sd_bus* connection) { bus = connection; }

    /// The end of all waiting for answers in this turn of the loop.
    [[nodiscard]] linux::TurnDeadline& deadline() const { return mainLoop.turnDeadline(); }

    /// From now on a timeout is not reported: for the last questions of a program that ends.
    void ignoreTimeouts() {
        timedOut = [] {};
    }

    /// Whether a signal was sent before our last change of another program's keys: it then reports that change, or
    /// facts that were known when we made it.
    [[nodiscard]] bool isOlderThanOwnChange(sd_bus_message* signal) const;

    /// Registers an action of ours, and requests a key. Returns whether the key was granted; Plasma 6.7's KGlobalAccel
    /// grants a key that another action has.
    [[nodiscard]] Answer<bool> registerKey(const AccelAction& action, std::int32_t key);

    /// Removes an action of ours and its key. Does not wait.
    void unregister(const std::string& action);

    /// The names of our own actions; empty without any.
    [[nodiscard]] std::vector<std::string> ownActions();

    /// Removes actions without a key from the settings. The reply arrives after everything that was removed before is
    /// free.
    void cleanUp();

    /// The action that gets the presses of a key: of those that share it, the one that was registered first.
    [[nodiscard]] Answer<std::optional<AccelAction>> recipient(std::int32_t key);

    /// All keys of an action, as the user has set them; empty for an unknown action.
    [[nodiscard]] Answer<KeySequences> keysOf(const AccelAction& action);

    /// Changes the keys of another program's action permanently, as the system's settings do. A key that a third action
    /// has is left out, except by Plasma 6.7's KGlobalAccel.
    [[nodiscard]] Answer<void> setKeysOf(const AccelAction& action, const KeySequences& keys);

private:
    /// A call about an action; null without a bus.
    [[nodiscard]] linux::OwnedMessage about(const AccelAction& action, const char* method) const;
    /// Waits for the reply; null without one.
    [[nodiscard]] linux::OwnedMessage answerTo(const linux::OwnedMessage& question);

    linux::MainLoop& mainLoop;
    std::function<void()> timedOut;
    sd_bus* bus = nullptr;
    /// The sender of the reply to our last change of another program's keys, and the serial of that reply.
    std::string changedBy;
    std::uint64_t changedAt = 0;
};

/// The call for a key's recipient, for sending without waiting; null without a bus. `readAction` reads the reply.
[[nodiscard]] linux::OwnedMessage newRecipientCall(sd_bus* bus, std::int32_t key);

/// The four names of an action; empty if they are missing.
[[nodiscard]] std::optional<AccelAction> readAction(sd_bus_message* message);
/// The lists of keys at the message's present position.
[[nodiscard]] KeySequences readKeys(sd_bus_message* message);

} // namespace platform::kwin
