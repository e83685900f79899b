#pragma once

#include "CorvidKitCore/Shortcut.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace platform {

/// The purposes for which desktops commonly hold a combination of keys.
enum class KeyPurpose : std::uint8_t {
    workspaceOnTheLeft,
    workspaceOnTheRight,
    workspaceAbove,
    workspaceBelow,
    showDesktop,
    allWorkspaces,
    allWindows,
};

/// The holder of a combination of keys, and its purpose.
struct ShortcutHolder {
    /// Keys held down together.
    struct Keys {
        /// Carbon's mask, as in `corvid::Shortcut`.
        std::uint32_t modifiers = 0;
        /// The name of the key that is no modifier, from its label or its position. UTF-8.
        std::string name;

        friend bool operator==(const Keys&, const Keys&) = default;
    };

    /// The desktop or program by its common name, as in "GNOME"; after a comma the place in its configuration, if it
    /// has one. UTF-8, never empty.
    std::string heldBy;
    /// A common purpose, or the holder's own words in its own language. UTF-8; empty without one.
    std::variant<KeyPurpose, std::string> purpose;
    /// Other keys with the same function there; empty if there are none, or it is unknown.
    std::optional<Keys> otherKeys = {};

    friend bool operator==(const ShortcutHolder&, const ShortcutHolder&) = default;
};

/// A search for holders. Destroying it ends it without a callback.
class HolderSearch {
public:
    HolderSearch() = default;
    HolderSearch(const HolderSearch&) = delete;
    HolderSearch& operator=(const HolderSearch&) = delete;
    virtual ~HolderSearch() = default;
};

/// Finds the holders of refused combinations of keys. Main thread only.
class ShortcutHolders {
public:
    /// One result for each combination, in their order; empty if it is unknown.
    using Answers = std::vector<std::optional<ShortcutHolder>>;
    using Found = std::function<void(const Answers&)>;

    ShortcutHolders() = default;
    ShortcutHolders(const ShortcutHolders&) = delete;
    ShortcutHolders& operator=(const ShortcutHolders&) = delete;
    virtual ~ShortcutHolders() = default;

    /// Begins a search. `found` is called at most once, in a later turn of the event loop, and may destroy the search;
    /// it is not called without a source or a reply. Null if a search is impossible. The search must not outlive this.
    [[nodiscard]] virtual std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                             Found found) = 0;
};

} // namespace platform
