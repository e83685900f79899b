#pragma once

#include "Platform/Seam/Desktop/HotKeyEvents.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace platform::linux {

/// The hot keys that are registered, by the numbers of their references. `Registered` is a backend's data on one. Main
/// thread only.
template <typename Registered>
class Registrations {
public:
    /// Registers one if `bind`, called with its number and its data, returns no error. One with the same `keys` as
    /// another is refused without that.
    [[nodiscard]] HotKeyEvents::Registration add(Registered registered, auto Registered::* keys, const auto& bind) {
        const bool isOurs =
            std::ranges::any_of(entries, [&](const auto& entry) { return entry.second.*keys == registered.*keys; });
        const OSStatus status = isOurs ? eventHotKeyExistsErr : bind(last + 1, registered);
        if (status != noErr) {
            return {.status = status, .reference = std::nullopt};
        }
        entries.emplace(++last, std::move(registered));
        return {.status = noErr, .reference = EventHotKeyRef{last}};
    }

    /// Forgets one and returns its data; empty for an unknown reference.
    [[nodiscard]] std::optional<Registered> remove(EventHotKeyRef reference) {
        auto entry = entries.extract(reference.value);
        return entry.empty() ? std::nullopt : std::optional(std::move(entry.mapped()));
    }

    /// The data of a number; null without one.
    [[nodiscard]] Registered* find(std::uint64_t number) {
        const auto found = entries.find(number);
        return found == entries.end() ? nullptr : &found->second;
    }

    // Pairs of a number and its data.
    [[nodiscard]] auto begin() { return entries.begin(); }
    [[nodiscard]] auto end() { return entries.end(); }
    [[nodiscard]] auto begin() const { return entries.begin(); }
    [[nodiscard]] auto end() const { return entries.end(); }

private:
    std::map<std::uint64_t, Registered> entries;
    std::uint64_t last = 0;
};

} // namespace platform::linux
