#pragma once

#include "Platform/Seam/Desktop/HotKeyEvents.h"

#include <map>
#include <optional>
#include <string>

namespace platform::linux {

/// Combinations that were refused, and whether others would lend them. `Key` is what a backend knows one by.
template <typename Key>
class RefusedKeys {
public:
    /// It can be borrowed, unless there is an obstacle.
    void refuse(const Key& key, std::optional<LoanObstacle> obstacle) { obstacles.insert_or_assign(key, obstacle); }

    void forget(const Key& key) { obstacles.erase(key); }

    [[nodiscard]] bool isLendable(const Key& key) const {
        const auto found = obstacles.find(key);
        return found != obstacles.end() && !found->second;
    }

    /// Nothing also for one that was not refused.
    [[nodiscard]] std::optional<LoanObstacle> obstacle(const Key& key) const {
        const auto found = obstacles.find(key);
        return found == obstacles.end() ? std::nullopt : found->second;
    }

private:
    std::map<Key, std::optional<LoanObstacle>> obstacles;
};

/// Hot keys and the handler of their presses. Main thread only.
class HandledHotKeys : public HotKeyEvents {
public:
    OSStatus installHandler(HotKeyEventHandler newHandler, void* userData) final {
        handler = newHandler;
        handlerData = userData;
        return noErr;
    }

protected:
    [[nodiscard]] bool hasHandler() const { return handler != nullptr; }

    /// Passes a press to the handler; without a handler, nothing happens.
    void reportPress(EventHotKeyID name) const {
        if (handler != nullptr) {
            const Press press(name);
            handler(nullptr, &press, handlerData);
        }
    }

    void reportLoss() const {
        notificationCenter()->post({.name = std::string(HotKeyNotification::didLoseHotKeys), .userInfo = {}});
    }

private:
    /// A press that found its hot key.
    class Press final : public HotKeyEvent {
    public:
        explicit Press(EventHotKeyID name)
            : name(name) {}

        [[nodiscard]] std::expected<EventHotKeyID, OSStatus> directObject() const override { return name; }

    private:
        EventHotKeyID name;
    };

    HotKeyEventHandler handler = nullptr;
    void* handlerData = nullptr;
};

} // namespace platform::linux
