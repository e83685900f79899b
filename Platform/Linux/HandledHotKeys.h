#pragma once

#include "Platform/HotKeyEvents.h"

#include <string>

namespace platform::linux {

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

    /// Tells the handler of a press; nothing where there is none.
    void tellOfPress(EventHotKeyID name) const {
        if (handler != nullptr) {
            const Press press(name);
            handler(nullptr, &press, handlerData);
        }
    }

    void tellOfLoss() const {
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
