#pragma once

#include "Platform/Linux/BaseFolders.h"
#include "Platform/Linux/FileRemoval.h"
#include "Tessel/CommandLine.h"

#include <vector>

namespace tessel {

/// All files that this program makes for a user, but for those in the runtime folder, which go with the session.
[[nodiscard]] std::vector<platform::linux::MadeFiles> filesOfUser(const platform::linux::BaseFolders& folders);

/// Ends every running program of this user, removes those files, and says what was removed. Gives the exit status:
/// where a program does not end, nothing is removed, for it would write them anew. Main thread.
[[nodiscard]] int forget(const CommandLine::Forget& request);

} // namespace tessel
