#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace platform::x11 {

/// The kind of an event without the flag for events that another client sent.
[[nodiscard]] inline std::uint8_t eventKind(const xcb_generic_event_t& event) {
    constexpr unsigned sentByClient = 0x80;
    return static_cast<std::uint8_t>(event.response_type & ~sentByClient);
}

/// Whether another client sent the event (SendEvent).
[[nodiscard]] inline bool isSentByClient(const xcb_generic_event_t& event) {
    return event.response_type != eventKind(event);
}

/// The event as the type of its kind; null if it is of another kind.
template <typename Event>
[[nodiscard]] const Event* eventAs(const xcb_generic_event_t& event, std::uint8_t kind) {
    return eventKind(event) == kind ? reinterpret_cast<const Event*>(&event) : nullptr;
}

} // namespace platform::x11
