#pragma once

#include "Platform/Linux/Holders/Accelerator.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform::linux {

/// A key that openbox's configuration binds.
struct OpenboxBinding {
    Accelerator keys;
    /// A common purpose, the command that it runs, or the name of openbox's action.
    std::variant<KeyPurpose, std::string> purpose;

    friend bool operator==(const OpenboxBinding&, const OpenboxBinding&) = default;
};

/// The bindings in a configuration of openbox (rc.xml; openbox.org/wiki/Help:Bindings), the last one first, because it
/// takes precedence. A key that begins a chain is bound, too. Of malformed XML, the bindings before the fault.
[[nodiscard]] std::vector<OpenboxBinding> readOpenboxBindings(std::string_view xml);

} // namespace platform::linux
