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
        /// The name of the other one as it stands on the key, or in its place. UTF-8.
        std::string name;

        friend bool operator==(const Keys&, const Keys&) = default;
    };

    /// The desktop or program as people call it, as in "GNOME"; behind a comma the place in its configuration, if it
    /// has one. UTF-8, never empty.
    std::string heldBy;
    /// A common purpose, or the holder's own words in its own language. UTF-8; empty where it has none.
    std::variant<KeyPurpose, std::string> purpose;
    /// Other keys that do the same there; nothing where there are none, or nobody has said.
    std::optional<Keys> otherKeys = {};

    friend bool operator==(const ShortcutHolder&, const ShortcutHolder&) = default;
};

/// A search for holders. Dropping it ends it, and nobody is told any more.
class HolderSearch {
public:
    HolderSearch() = default;
    HolderSearch(const HolderSearch&) = delete;
    HolderSearch& operator=(const HolderSearch&) = delete;
    virtual ~HolderSearch() = default;
};

/// Finds out who holds combinations of keys that were refused. Main thread only.
class ShortcutHolders {
public:
    /// One answer for each combination, in their order; nothing where nobody can say.
    using Answers = std::vector<std::optional<ShortcutHolder>>;
    using Found = std::function<void(const Answers&)>;

    ShortcutHolders() = default;
    ShortcutHolders(const ShortcutHolders&) = delete;
    ShortcutHolders& operator=(const ShortcutHolders&) = delete;
    virtual ~ShortcutHolders() = default;

    /// Begins to look. `found` is called at most once, in a later turn of the event loop, and may drop the search;
    /// never where there is nobody to ask or no answer comes. Null where a search cannot be begun. The search must not
    /// outlive this.
    [[nodiscard]] virtual std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                             Found found) = 0;
};

} // namespace platform
