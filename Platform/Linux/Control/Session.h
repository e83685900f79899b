#pragma once

#include <string>

namespace platform::linux {

/// A session as the programs in it name it to one another.
struct Session {
    /// The name of the display that shows its windows.
    std::string display;
    /// The user's folder for sockets (`platform::linux::runtimeFolder`); need not exist.
    std::string runtimeFolder;
};

} // namespace platform::linux
