#pragma once

#include "Platform/HotKeyEvents.h"

#include <memory>
#include <utility>

namespace platform::linux {

/// Notes the losses that hot keys report.
class HotKeyLosses {
public:
    explicit HotKeyLosses(const HotKeyEvents& events)
        : center(events.notificationCenter())
        , token(center->addObserver(HotKeyNotification::didLoseHotKeys,
                                    [this](const Notification& /*loss*/) { wasReported = true; })) {}

    HotKeyLosses(const HotKeyLosses&) = delete;
    HotKeyLosses& operator=(const HotKeyLosses&) = delete;
    ~HotKeyLosses() { center->removeObserver(token); }

    /// Whether a loss was reported since this was last asked.
    [[nodiscard]] bool take() { return std::exchange(wasReported, false); }

private:
    std::shared_ptr<NotificationCenter> center;
    NotificationCenter::Token token;
    bool wasReported = false;
};

} // namespace platform::linux
