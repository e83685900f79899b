#pragma once

#include "Platform/Seam/Desktop/HotKeyEvents.h"
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
    [[nodiscard]] std::optional<LoanObstacle> loanObstacle(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const override;

    /// From now on another program holds the combination, and it can be borrowed.
    void lend(std::uint32_t keyCode, std::uint32_t modifiers) { lendable.insert({keyCode, modifiers}); }

    /// From now on the combination is somebody else's, and that is in the way of borrowing it. `appearsLendable`: it
    /// only turns out when it is tried.
    void withhold(std::uint32_t keyCode, std::uint32_t modifiers, LoanObstacle obstacle, bool appearsLendable = false) {
        withheld.insert_or_assign({keyCode, modifiers}, Withheld{obstacle, appearsLendable});
    }

    /// Whether borrowing changes the desktop's settings.
    bool lendsThroughSettings = false;

    /// The result of installing the handler from now on; it is installed only with `noErr`.
    OSStatus installStatus = noErr;

    /// From now on the combination is refused with that status; with `noErr` it is "registered" without a reference.
    void refuse(std::uint32_t keyCode, std::uint32_t modifiers, OSStatus status = eventHotKeyExistsErr);

    /// Whether a refusal returns a meaningless reference all the same.
    bool refusesWithReference = false;

    /// From now on the combination is free again.
    void release(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Notifies observers that hot keys were lost.
    void announceLoss();

    /// Presses a combination. Gives the handler's answer; nothing where nobody registered it or no handler is there.
    std::optional<OSStatus> press(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Calls the handler with an event of that name; with one whose parameter cannot be read; with none at all. Returns
    /// its result, empty without a handler.
    std::optional<OSStatus> deliver(EventHotKeyID name);
    std::optional<OSStatus> deliverWithoutParameter(OSStatus status = eventParameterNotFoundErr);
    std::optional<OSStatus> deliverWithoutEvent();

    /// The user data from the handler's installation; null without a handler.
    [[nodiscard]] const void* handlerData() const { return userData; }

    /// The registered hot keys, oldest first.
    [[nodiscard]] const std::vector<Registered>& registered() const { return hotKeys; }

private:
    struct Withheld {
        LoanObstacle obstacle;
        bool appearsLendable = false;
    };

    std::optional<OSStatus> call(const HotKeyEvent* event);

    Trace& trace;
    HotKeyEventHandler handler = nullptr;
    void* userData = nullptr;
    std::map<std::pair<std::uint32_t, std::uint32_t>, OSStatus> refusals;
    std::vector<Registered> hotKeys;
    std::set<std::pair<std::uint32_t, std::uint32_t>> lendable;
    std::map<std::pair<std::uint32_t, std::uint32_t>, Withheld> withheld;
    bool borrows = false;
    std::uint64_t lastReference = 0;
};

} // namespace platform::simulated
