#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Linux/HandledHotKeys.h"
#include "Platform/Sway/Combination.h"
#include "Platform/Sway/Configuration.h"
#include "Platform/Sway/Session.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace platform::sway {

/// Global hot keys as bindings that do nothing, made while sway runs (sway(5), "bindcode"), of whose use an event
/// tells.
///
/// A binding that is there already would be replaced without a word, so the configuration is read first, and what it
/// binds stays the user's. Bindings of keys by number hold in every layout, and locks do not matter to them. Reading
/// the configuration again makes sway forget them; they are then made anew. A program that ends without taking them
/// back leaves keys that do nothing, until it starts again or the configuration is read again.
class HotKeys final : public linux::HandledHotKeys, private Session::Follower {
public:
    /// `session` has to outlive this.
    explicit HotKeys(Session& session, Includes includes = includedFiles);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    /// Whether registering everything anew would come out otherwise since this was last asked: the configuration has
    /// been read again, and binds one of ours now, or no longer one that was refused.
    [[nodiscard]] bool takeChange();

    /// The line of the configuration that has a shortcut, as it was last read; null where there is none.
    [[nodiscard]] const ConfiguredBinding* bindingThatHas(const corvid::Shortcut& shortcut) const;

private:
    struct Registered {
        HotKeyCombination combination;
        EventHotKeyID name;
        bool isBound = false;
    };

    void sessionOpened() override;
    void sessionClosed() override;
    void sessionTold(EventType type, const Json& content) override;
    void sessionIsQuiet() override {}

    void handlePress(const Json& content);
    /// Binds everything anew after sway has forgotten it.
    void renew();
    [[nodiscard]] OSStatus bind(const HotKeyCombination& combination, std::uint64_t reference);
    void unbind(const HotKeyCombination& combination);
    /// Bindings are made in the mode that is entered, and ours belong to the default one.
    [[nodiscard]] bool runInDefaultMode(const std::string& command);
    /// What the configuration binds; nothing if sway does not tell.
    [[nodiscard]] const ConfiguredBindings* configured();

    Session& session;
    Includes includes;
    /// Nothing until it is asked for.
    std::optional<ConfiguredBindings> bound;
    std::map<std::uint64_t, Registered> registrations;
    std::uint64_t lastReference = 0;
    /// What the configuration bound when it was to be registered, by its text.
    std::map<std::string, HotKeyCombination> refused;
    bool hasChanged = false;
};

} // namespace platform::sway
