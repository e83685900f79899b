#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Linux/HotKeys/HandledHotKeys.h"
#include "Platform/Linux/HotKeys/Registrations.h"
#include "Platform/Wayfire/BindingOptions.h"
#include "Platform/Wayfire/Session.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// Global hot keys as bindings of the plugin "command", made while Wayfire runs ("command/register-binding"). They end
/// with the session's connection, however this program ends. Locks and layouts do not matter, and a press that is held
/// counts once (measured with 0.10).
///
/// Wayfire runs all bindings of a combination, and does not say that there is another one. So the options of all
/// plugins in use are read first, in the values that are in force; what they bind stays the user's.
///
/// Nothing is lent. "wayfire/set-config-options" could free a combination, but it locks the option: Wayfire would not
/// read it from its configuration any more, and keep it free after this program was killed.
class HotKeys final : public linux::HandledHotKeys, private Session::Follower {
public:
    /// `session` has to outlive this.
    explicit HotKeys(Session& session, MetadataTexts metadata = metadataTexts);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    [[nodiscard]] std::optional<LoanObstacle> loanObstacle(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const override;

    /// The option that has a shortcut, as the configuration was last read; empty without one.
    [[nodiscard]] std::optional<ShortcutHolder> holderOf(const corvid::Shortcut& shortcut) const;

    /// Reads the configuration again. A loss is reported if registering all anew would give another result.
    void configurationChanged();

private:
    struct Registered {
        KeyPress keys;
        EventHotKeyID name;
        /// Wayfire's number of the binding; nothing while it has none.
        std::optional<std::uint64_t> binding;
    };

    using ConfiguredKeys = std::map<KeyPress, ShortcutHolder>;

    void sessionOpened() override;
    void sessionClosed() override;
    void sessionReported(std::string_view event, const Json& content) override;

    [[nodiscard]] OSStatus bind(Registered& registered);
    void unbind(Registered& registered);
    /// The combinations of the configuration; null if Wayfire does not answer.
    [[nodiscard]] const ConfiguredKeys* configured();
    [[nodiscard]] std::optional<ConfiguredKeys> readConfiguration();

    Session& session;
    MetadataTexts metadata;
    /// Nothing until it is asked for.
    std::optional<ConfiguredKeys> bound;
    linux::Registrations<Registered> registrations;
    linux::RefusedKeys<KeyPress> refused;
};

} // namespace platform::wayfire
