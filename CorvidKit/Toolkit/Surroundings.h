#pragma once

#include "Platform/Appearance.h"
#include "Platform/HostedLoop.h"
#include "Platform/MainActor.h"
#include "Platform/OwnWindows.h"
#include "Platform/Screens.h"
#include "Platform/SessionLock.h"

#include <string>
#include <vector>

namespace corvid::toolkit {

/// The toolkit's dependencies. Everything here outlives it.
struct Surroundings {
    platform::HostedLoop& mainLoop;
    platform::MainActor& mainActor;
    platform::Appearance& appearance;
    /// Null where there is no desktop, and nothing but pictures can be had.
    platform::OwnWindows* ownWindows;
    platform::Screens& screens;
    /// Null where nothing is shown that would be in the way of a lock.
    platform::SessionLock* sessionLock;
    /// The languages that the user wants, the best first.
    std::vector<std::string> languages;
};

} // namespace corvid::toolkit
