#pragma once

#include "Platform/Seam/Desktop/Appearance.h"
#include "Platform/Seam/Desktop/HostedLoop.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/OwnWindows.h"
#include "Platform/Seam/Desktop/Screens.h"
#include "Platform/Seam/Desktop/SessionLock.h"

#include <string>
#include <vector>

namespace corvid::toolkit {

/// The toolkit's dependencies. Everything here outlives it.
struct Dependencies {
    platform::HostedLoop& mainLoop;
    platform::MainActor& mainActor;
    platform::Appearance& appearance;
    /// Null without a desktop, when only pictures can be drawn.
    platform::OwnWindows* ownWindows;
    platform::Screens& screens;
    /// Null if no window is shown that could block a lock.
    platform::SessionLock* sessionLock;
    /// The languages that the user wants, the best first.
    std::vector<std::string> languages;
};

} // namespace corvid::toolkit
