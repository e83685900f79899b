#pragma once

#include "CorvidKitCore/Preference.h"
#include "TesselCore/WindowAction.h"

#include <functional>
#include <map>
#include <string>

/// The program's settings, as stored in the user's defaults.
namespace tessel::Prefs {

/// Actions by bundle identifier: one rule for each application.
using Rules = std::map<std::string, WindowAction, std::less<>>;

inline const corvid::Preference<Rules> rules{.key = "rules", .defaultValue = {}};

} // namespace tessel::Prefs
