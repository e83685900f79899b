#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/I3Ipc/Combination.h"
#include "Platform/I3Ipc/Configuration.h"
#include "Platform/Linux/HotKeys/HandledHotKeys.h"
#include "Platform/Linux/HotKeys/Registrations.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/Sway/Session.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace platform::sway {

/// Global hot keys as bindings without effect, made while sway runs (sway(5), "bindcode"); an event reports each press.
///
/// sway would silently replace an existing binding, so the configuration is read first, and its keys stay the user's.
/// Bindings by key code hold in every layout, and ignore locks. When sway reloads the configuration it forgets them;
/// they are then made again. A program that ends without removing them leaves keys without effect, until it starts
/// again or the configuration is reloaded.
///
/// A borrowed key is bound once for each layout ("Group1+"). For sway these are other bindings than the user's, which
/// stay as they are, and come before those that name no layout (sway/input/keyboard.c, get_active_binding; measured
/// with 1.7). Where the user's own hold, as on a locked screen, ours do not, and the user's act. Lines that name a
/// layout or a keyboard come before ours or would be replaced: these are not lent. sway keeps bindings whose program is
/// gone; `Leave` receives the commands that remove the borrowed ones then.
///
/// A loss is reported when the configuration has been read again and registering all anew would give another result: it
/// uses one of our keys now, no longer uses one that was refused or borrowed, or uses one in another way.
class HotKeys final : public linux::HandledHotKeys, private Session::Follower {
public:
    /// Receives the list of commands that removes the borrowed bindings, before it grows and after it shrinks; empty
    /// while none is borrowed.
    using Leave = std::function<void(const std::string& commands)>;

    /// `session` has to outlive this.
    explicit HotKeys(
        Session& session, i3ipc::Includes includes = i3ipc::includedFiles, Leave leave = [](const std::string&) {});
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;
    [[nodiscard]] std::optional<LoanObstacle> loanObstacle(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const override;

    /// The line that has a shortcut, in the configuration as it was last read; empty without one.
    [[nodiscard]] std::optional<ShortcutHolder> holderOf(const corvid::Shortcut& shortcut) const;

private:
    struct Binding {
        /// In the format of commands: "Group1+Ctrl+Mod1+113".
        std::string keys;
        bool isOnRelease = false;
    };

    struct Registered {
        i3ipc::HotKeyCombination combination;
        EventHotKeyID name;
        /// The bindings made for it; none while the session is closed, or the user's configuration has the keys.
        std::vector<Binding> bindings;
        bool isBorrowed = false;
    };

    struct Refused {
        i3ipc::HotKeyCombination combination;
        bool isLendable = false;
    };

    /// Those that are laid over the user's own.
    [[nodiscard]] static std::vector<Binding> bindingsOver(const i3ipc::HotKeyCombination& combination,
                                                           bool isOnRelease);
    [[nodiscard]] static std::vector<std::string> unbindingCommands(const std::vector<Binding>& bindings);

    void sessionOpened() override;
    void sessionClosed() override;
    void sessionReported(i3ipc::EventType type, const i3ipc::Json& content) override;

    void handlePress(const i3ipc::Json& content);
    /// Binds everything anew after sway has forgotten it.
    void renew();
    [[nodiscard]] OSStatus bind(std::uint64_t reference, Registered& registered);
    void unbind(const Registered& registered);
    void unbind(const std::vector<Binding>& bindings);
    void setLeft(const i3ipc::HotKeyCombination& combination, std::string commands);
    /// Bindings are made in the mode that is entered, and ours belong to the default one. Whether all succeeded.
    [[nodiscard]] bool runInDefaultMode(const std::vector<std::string>& commands);
    /// The bindings of the configuration; null if sway does not answer.
    [[nodiscard]] const i3ipc::ConfiguredBindings* configured();

    Session& session;
    i3ipc::Includes includes;
    Leave leave;
    /// Nothing until it is asked for.
    std::optional<i3ipc::ConfiguredBindings> bound;
    linux::Registrations<Registered> registrations;
    /// The configuration's bindings of the refused combinations, by the combination's text.
    std::map<std::string, Refused> refused;
    /// The commands that remove the bindings of each borrowed combination, by the combination's text.
    std::map<std::string, std::string> left;
    bool borrows = false;
};

} // namespace platform::sway
