#pragma once

#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "CorvidKitCore/PreferenceStore.h"
#include "Platform/Simulated/Trace.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform::simulated {

/// The user's settings, in memory.
///
/// Trace: "read setting enabled", "write setting enabled", "remove setting enabled"; "collect settings" and "keep
/// settings" around what is kept at once.
class UserDefaults final : public corvid::PreferenceStore {
public:
    explicit UserDefaults(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] std::optional<corvid::PropertyListValue> object(std::string_view key) const override {
        trace.record("read setting " + std::string(key));
        return store.object(key);
    }

    void set(std::optional<corvid::PropertyListValue> value, std::string_view key) override {
        trace.record((value ? "write setting " : "remove setting ") + std::string(key));
        store.set(std::move(value), key);
    }

    void together(const std::function<void()>& changes) override {
        trace.record("collect settings");
        changes();
        trace.record("keep settings");
    }

    /// The stored values, for reading and changing without a trace.
    corvid::InMemoryPreferenceStore store;

private:
    Trace& trace;
};

} // namespace platform::simulated
