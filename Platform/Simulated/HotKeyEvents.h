#pragma once

#include "Platform/HotKeyEvents.h"
#include "Platform/Simulated/Trace.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace platform::simulated {

/// A keyboard whose keys can be taken by others.
///
/// Trace: "install hot key handler", "register hot key 124 6144 as CWky 1", "unregister hot key CWky 1".
class HotKeyEvents final : public platform::HotKeyEvents {
public:
    /// A hot key that is registered.
    struct Registered {
        EventHotKeyRef reference;
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        EventHotKeyID name;

        friend bool operator==(const Registered&, const Registered&) = default;
    };

    explicit HotKeyEvents(Trace& trace)
        : trace(trace) {}

    OSStatus installHandler(HotKeyEventHandler handler, void* userData) override;
    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;
    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] bool borrowingChangesSettings() const override { return lendsThroughSettings; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;

    /// From now on another program holds the combination, and it can be borrowed.
    void lend(std::uint32_t keyCode, std::uint32_t modifiers) { lendable.insert({keyCode, modifiers}); }

    /// Whether borrowing changes the desktop's settings.
    bool lendsThroughSettings = false;

    /// What installing the handler gives from now on; it is installed only with `noErr`.
    OSStatus installStatus = noErr;

    /// From now on the combination is refused with that status; with `noErr` it is "registered" without a reference.
    void refuse(std::uint32_t keyCode, std::uint32_t modifiers, OSStatus status = eventHotKeyExistsErr);

    /// Whether a refusal comes with a reference all the same, one that means nothing.
    bool refusesWithReference = false;

    /// From now on the combination is free again.
    void release(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Tells observers that hot keys were lost.
    void announceLoss();

    /// Presses a combination. Gives the handler's answer; nothing where nobody registered it or no handler is there.
    std::optional<OSStatus> press(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Calls the handler with an event of that name; with one whose parameter cannot be read; with none at all. Gives
    /// its answer, nothing where no handler is there.
    std::optional<OSStatus> deliver(EventHotKeyID name);
    std::optional<OSStatus> deliverWithoutParameter(OSStatus status = eventParameterNotFoundErr);
    std::optional<OSStatus> deliverWithoutEvent();

    /// The user data that the handler was installed with; null without a handler.
    [[nodiscard]] const void* handlerData() const { return userData; }

    /// The hot keys that are registered, oldest first.
    [[nodiscard]] const std::vector<Registered>& registered() const { return hotKeys; }

private:
    std::optional<OSStatus> call(const HotKeyEvent* event);

    Trace& trace;
    HotKeyEventHandler handler = nullptr;
    void* userData = nullptr;
    std::map<std::pair<std::uint32_t, std::uint32_t>, OSStatus> refusals;
    std::vector<Registered> hotKeys;
    std::set<std::pair<std::uint32_t, std::uint32_t>> lendable;
    bool borrows = false;
    std::uint64_t lastReference = 0;
};

} // namespace platform::simulated
