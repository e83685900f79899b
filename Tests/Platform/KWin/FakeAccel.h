#pragma once

#include "Platform/KWin/GlobalAccel.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// A session's KGlobalAccel: the keys of its programs. Any thread.
class FakeAccel {
public:
    using Action = platform::kwin::AccelAction;
    using Sequences = platform::kwin::KeySequences;

    /// Grants a key that another action has, as Plasma 6.7's KGlobalAccel does; of two, the older action gets the
    /// presses.
    std::atomic<bool> sharesKeys = false;
    /// Refuses every call after this number of calls, as if it came from a program that was killed then.
    std::atomic<int> callsLeft = std::numeric_limits<int>::max();
    /// Leaves the keys of other programs as they are, whatever it is asked.
    std::atomic<bool> keepsForeignKeys = false;
    /// Called before the keys of an action are changed as the system's settings change them. On the fake's thread.
    std::function<void()> beforeForeignChange = [] {};

    FakeAccel() = default;

    /// An action of another program, with these keys.
    void holdSequences(const Action& action, const Sequences& keys);
    void hold(const Action& action, const std::vector<std::int32_t>& keys);

    [[nodiscard]] Sequences keysOf(const Action& action);
    /// The component that gets the presses of a key; empty if none does.
    [[nodiscard]] std::string recipient(std::int32_t key);
    /// Our own actions, each with its key.
    [[nodiscard]] std::map<std::string, int> ownKeys();
    /// Forgets all keys of other programs.
    void forgetOthers();

    /// Answers a call; `note` gets the registrations. Returns 0 for a call that is not KGlobalAccel's.
    int answer(sd_bus_message* call, const std::function<void(std::string)>& note);

private:
    struct Held {
        Action action;
        Sequences keys;
    };

    [[nodiscard]] Held* find(const Action& action);
    [[nodiscard]] const Held* recipientOf(const platform::kwin::KeySequence& sequence) const;
    /// Whether a key alone is part of a longer sequence; that of Plasma 5.27 refuses it then.
    [[nodiscard]] bool isInARow(const platform::kwin::KeySequence& sequence) const;
    Sequences set(Held& held, const Sequences& keys);
    int setKeys(sd_bus_message* call, const std::function<void(std::string)>& note);
    int setForeignKeys(sd_bus_message* call);
    int sendRecipient(sd_bus_message* call);
    int sendKeys(sd_bus_message* call);
    int sendNames(sd_bus_message* call);
    int unregister(sd_bus_message* call);

    std::mutex mutex;
    std::vector<Held> all;
};

/// Emits the signal of the system's settings for changed keys of an action.
void signalChange(sd_bus* bus, const FakeAccel::Action& action, const FakeAccel::Sequences& keys);

[[nodiscard]] FakeAccel::Sequences alone(const std::vector<std::int32_t>& keys);
