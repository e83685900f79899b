#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Linux/HandledHotKeys.h"
#include "Platform/Sway/Combination.h"
#include "Platform/Sway/Configuration.h"
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
/// stay unchanged, and take precedence over those that name no layout (sway/input/keyboard.c, get_active_binding;
/// measured with 1.7). Where only the user's own hold, as on a locked screen, the user's act. Lines that name a layout
/// or a keyboard would take precedence over ours or be replaced by them: these are not lent. sway keeps the bindings of
/// a dead program; `LastCommands` gets the commands that remove the borrowed ones.
class HotKeys final : public linux::HandledHotKeys, private Session::Follower {
public:
    /// Receives the list of commands that removes the borrowed bindings, before it grows and after it shrinks; empty if
    /// there are none.
    using Leave = std::function<void(const std::string& commands)>;

    /// `session` must outlive this.
    explicit HotKeys(Session& session, Includes includes = includedFiles, Leave leave = [](const std::string&) {});
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;

    /// Whether a new registration would have another result, since the last check: the configuration has been reloaded,
    /// and now uses one of our keys, no longer uses one that was refused or borrowed, or uses it in another way.
    [[nodiscard]] bool takeChange();

    /// The lines of the configuration with a shortcut, as last read.
    [[nodiscard]] KeyUse useOf(const corvid::Shortcut& shortcut) const;

private:
    struct Binding {
        /// In the format of commands: "Group1+Ctrl+Mod1+113".
        std::string keys;
        bool isOnRelease = false;
    };

    struct Registered {
        HotKeyCombination combination;
        EventHotKeyID name;
        /// Its bindings; none while the compositor is unavailable, or the user has the keys.
        std::vector<Binding> bindings;
        bool isBorrowed = false;
    };

    struct Refused {
        HotKeyCombination combination;
        bool isLendable = false;
    };

    /// The bindings over the user's own.
    [[nodiscard]] static std::vector<Binding> bindingsOver(const HotKeyCombination& combination, bool isOnRelease);
    [[nodiscard]] static std::vector<std::string> unbindingCommands(const std::vector<Binding>& bindings);

    void sessionOpened() override;
    void sessionClosed() override;
    void sessionTold(EventType type, const Json& content) override;
    void sessionIsQuiet() override {}

    void handlePress(const Json& content);
    /// Makes all bindings again after sway has forgotten them.
    void renew();
    [[nodiscard]] OSStatus bind(Registered& registered, std::uint64_t reference);
    void unbind(const Registered& registered);
    void unbind(const std::vector<Binding>& bindings);
    void setLeft(const HotKeyCombination& combination, std::string commands);
    /// Bindings are made in the current mode, and ours belong to the default one. Returns whether all succeeded.
    [[nodiscard]] bool runInDefaultMode(const std::vector<std::string>& commands);
    /// The configuration's bindings; empty if sway does not report them.
    [[nodiscard]] const ConfiguredBindings* configured();

    Session& session;
    Includes includes;
    Leave leave;
    /// Empty until the first request.
    std::optional<ConfiguredBindings> bound;
    std::map<std::uint64_t, Registered> registrations;
    std::uint64_t lastReference = 0;
    /// The configuration's bindings of the refused combinations, by the combination's text.
    std::map<std::string, Refused> refused;
    /// The commands that remove the bindings of each borrowed combination, by the combination's text.
    std::map<std::string, std::string> left;
    bool hasChanged = false;
    bool borrows = false;
};

} // namespace platform::sway
