#pragma once

#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Files/FileRemoval.h"
#include "Tessel/CommandLine.h"

#include <vector>

namespace tessel {

/// All files that this program makes for a user, except those in the runtime folder, which the session removes.
[[nodiscard]] std::vector<platform::linux::MadeFiles> filesOfUser(const platform::linux::BaseFolders& folders);

/// Ends every running instance of this user, removes those files, and prints what was removed. Returns the exit status:
/// if an instance does not end, nothing is removed, because it would write them again. Main thread.
[[nodiscard]] int forget(const CommandLine::Forget& request);

} // namespace tessel
