#pragma once

#include "CorvidKitCore/PropertyListValue.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The build's facts about this program.
struct MainBundle {
    /// The name under which it is installed (on Linux its desktop entry's id without ".desktop").
    std::optional<std::string> identifier;
    /// Facts by name, such as "CFBundleShortVersionString".
    corvid::PropertyListValue::Dictionary infoDictionary;
    /// The scheme and host of the maker's website, without a slash at the end.
    std::string website;
    /// The languages that the user wants and that have texts, the most wanted first; empty means English.
    std::vector<std::string> preferredLocalizations = {};
};

} // namespace platform
