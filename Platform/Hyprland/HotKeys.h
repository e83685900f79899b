#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Compositor/ProtocolHotKeys.h"
#include "Platform/Hyprland/Binds.h"
#include "Platform/Hyprland/Session.h"
#include "Platform/Linux/HotKeys/HandledHotKeys.h"
#include "Platform/Linux/HotKeys/Registrations.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::hyprland {

/// Global hot keys on Hyprland: by the Wayland protocol from 0.56 on (`compositor::ProtocolHotKeys`), and else as
/// bindings without effect, made while it runs, whose use is an event.
///
/// The configuration comes first. Only one of the two protocols refuses what it binds, and a binding made at run time
/// acts beside it; so the compositor's bindings are read, and those in the usual mode stay the user's. They are read
/// again when the configuration has changed. A loss is reported when registering all anew would give another result.
/// Nothing is borrowed: a binding that is laid aside for us would stay aside if this program were killed.
class HotKeys final : public linux::HandledHotKeys, private Session::Follower {
public:
    using Protocol = compositor::ProtocolHotKeys;
    /// Opens the protocol; null where the compositor has none.
    using Open = std::function<std::unique_ptr<Protocol>(Protocol::Handlers handlers, Instant deadline)>;
    /// The text for a combination (Carbon key code and modifiers) in the compositor's lists.
    using Naming = std::function<std::string(std::uint32_t keyCode, std::uint32_t modifiers)>;

    /// `session` has to outlive this.
    HotKeys(Session& session, Open open, Naming naming);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    [[nodiscard]] std::optional<LoanObstacle> loanObstacle(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const override;

    /// The holder of a refused combination: Hyprland, or another program if Hyprland says which. Nothing for a
    /// combination that was not refused.
    [[nodiscard]] std::optional<ShortcutHolder> holderOf(const corvid::Shortcut& shortcut) const;

private:
    struct Registered {
        Combination combination;
        EventHotKeyID name;
        std::string title;
        bool isBound = false;
    };

    void sessionOpened() override;
    void sessionClosed() override;
    void sessionReported(std::string_view event, std::string_view data) override;

    void openProtocol();
    /// Binds everything anew, after the compositor or its configuration has changed.
    void renew();
    [[nodiscard]] OSStatus bind(std::uint64_t number, Registered& registered);
    [[nodiscard]] OSStatus refuse(const Registered& registered, ShortcutHolder holder);
    void unbind(std::uint64_t number, Registered& registered);
    void handlePress(std::uint64_t number);
    /// The bindings of the compositor; null if it does not answer.
    [[nodiscard]] const std::vector<Bind>* present();
    /// The binding of somebody else that has the combination in the usual mode; null without one.
    [[nodiscard]] static const Bind* bindOf(const std::vector<Bind>& binds, const Combination& combination);

    Session& session;
    Open open;
    Naming naming;
    std::unique_ptr<Protocol> protocol;
    /// Whether its connection has ended while the compositor goes on.
    bool isProtocolLost = false;
    /// Nothing until they are asked for.
    std::optional<std::vector<Bind>> binds;
    linux::Registrations<Registered> registrations;
    /// The holders of the refused combinations.
    std::map<Combination, ShortcutHolder> refused;
};

} // namespace platform::hyprland
