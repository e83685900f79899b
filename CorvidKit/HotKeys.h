#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKitCore/Shortcut.h"
#include "Platform/Seam/Desktop/HotKeyEvents.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace corvid {

/// Owns the platform's hot keys: installs the one handler, assigns ids to the keys and runs the action of a pressed
/// one. Main thread only, and without a lock. It must outlive the platform's event loop.
class HotKeyDispatcher {
public:
    using Handler = std::function<void()>;

    /// The one that presses go to: the program's, made on first use, or a test's own.
    [[nodiscard]] static HotKeyDispatcher& shared();

    /// Becomes the shared one for as long as it lives; the one before it is so again afterwards. `firstID` is the id of
    /// the first hot key; the later ones count up from it.
    explicit HotKeyDispatcher(std::uint32_t firstID = 1);
    HotKeyDispatcher(const HotKeyDispatcher&) = delete;
    HotKeyDispatcher& operator=(const HotKeyDispatcher&) = delete;
    ~HotKeyDispatcher();

    /// Registers a hot key; returns its id, or nothing if the platform refuses it for any reason. Every call uses up an
    /// id, successful or not, and no id is ever used twice.
    [[nodiscard]] std::optional<std::uint32_t> registerHotKey(const Shortcut& shortcut, Handler handler);

    /// Releases a hot key and destroys its handler. An unknown id is ignored.
    void unregister(std::uint32_t id);

private:
    struct Entry {
        platform::EventHotKeyRef ref;
        Handler handler;
    };

    /// The platform's event handler. It has no use for `userData`: presses go to the shared dispatcher.
    static platform::OSStatus hotKeyCallback(platform::EventHandlerCall* nextHandler,
                                             const platform::HotKeyEvent* event, void* userData);

    /// Runs the handler of an id, if there is any. The handler may register and unregister hot keys.
    void fire(std::uint32_t id);

    [[nodiscard]] std::uint32_t takeID();

    HotKeyDispatcher* previous;
    std::map<std::uint32_t, Entry> entries;
    std::uint32_t nextID;
    bool handlerInstalled = false;
};

/// Keeps a table of shortcuts registered and calls `onPress` with the action whose shortcut was pressed. Main thread
/// only.
///
/// Dropping a center does not give its hot keys back, `unregister` does; a press of a dropped center's key does
/// nothing. An action can be anything that is compared for equality and hashed.
template <typename Action>
class HotKeyCenter {
public:
    /// Called at every press. It may register, unregister, and drop the center.
    std::function<void(Action)> onPress = [](Action) {};

    explicit HotKeyCenter(HotKeyDispatcher& dispatcher = HotKeyDispatcher::shared())
        : dispatcher(dispatcher) {}

    HotKeyCenter(const HotKeyCenter&) = delete;
    HotKeyCenter& operator=(const HotKeyCenter&) = delete;
    ~HotKeyCenter() = default;

    /// The actions whose shortcut the platform refused at the last registration.
    [[nodiscard]] const std::unordered_set<Action>& failed() const { return refused; }

    /// Whether any shortcut is registered.
    [[nodiscard]] bool isRegistered() const { return !ids.empty(); }

    /// Replaces everything registered so far by a table (the field says `register`, which the language reserves).
    /// Shortcuts that are not valid are left out, and do not count as failed. A table is any map from actions to
    /// shortcuts; its order is the order of registration.
    template <typename Table = std::unordered_map<Action, Shortcut>>
    void registerShortcuts(const Table& shortcuts) {
        unregister();
        for (const auto& [action, shortcut] : shortcuts) {
            if (!shortcut.isValid()) {
                continue;
            }
            auto handler = [self = std::weak_ptr(itself), action] {
                if (const auto center = self.lock()) {
                    // A copy: the handler may replace itself, or drop the center.
                    const auto press = (*center)->onPress;
                    press(action);
                }
            };
            if (const auto id = dispatcher.registerHotKey(shortcut, std::move(handler))) {
                ids.emplace_back(action, *id);
            } else {
                refused.insert(action);
            }
        }
    }

    /// Releases all hot keys of this center and forgets which had failed.
    void unregister() {
        for (const auto& [action, id] : ids) {
            assertIsolated({.file = "CorvidKit/HotKeys", .line = 31});
            dispatcher.unregister(id);
        }
        ids.clear();
        refused.clear();
    }

private:
    HotKeyDispatcher& dispatcher;
    std::unordered_set<Action> refused;
    /// In the order of registration, in which they are given back as well.
    std::vector<std::pair<Action, std::uint32_t>> ids;
    /// The handlers hold it weakly and check it: the center may be gone.
    std::shared_ptr<HotKeyCenter*> itself = std::make_shared<HotKeyCenter*>(this);
};

} // namespace corvid
